// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/runner.h"
#include "widgets/cell_picker.h"
#include "widgets/context_menu.h"

#include <QApplication>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;
using namespace zelto::widgets;

namespace {

/// The entry that is chosen in an open list, -1 when it is left without a choice. The list opens
/// with an entry selected and by a character. Keys are "~" Enter, "^" Esc, "<" Backspace, "{" Home,
/// "}" End, "v" Down, ">" Tab, "&" Shift+Tab; "!" leaves for another field.
int chosenBy(int current, const QString& opener, const QString& keys)
{
    QWidget window;
    window.resize(300, 200);
    QLineEdit other(&window);
    CellPicker list(&window);
    QSignalSpy choices(&list, &CellPicker::chosen);
    QSignalSpy dismissals(&list, &CellPicker::dismissed);
    window.show();
    if (!QTest::qWaitForWindowActive(&window))
        qFatal("the window does not become active");
    list.open({{u"A"_s, u"1"_s, {}},
               {u"B"_s, u"0,9"_s, {}},
               {u"SER"_s, u"1.2"_s, {}},
               {u"S"_s, u"1.1"_s, {}},
               {u"se"_s, u"0.35"_s, u"Servizi"_s},
               {},
               {u"VERANDA"_s, u"2"_s, {}},
               {u"vetro"_s, u"3"_s, {}}},
              current, {10, 190, 80, 20}, opener);
    static const QHash<QChar, Qt::Key> named{{u'~', Qt::Key_Return},    {u'^', Qt::Key_Escape},
                                             {u'<', Qt::Key_Backspace}, {u'{', Qt::Key_Home},
                                             {u'}', Qt::Key_End},       {u'v', Qt::Key_Down},
                                             {u'>', Qt::Key_Tab},       {u'&', Qt::Key_Backtab}};
    const bool inside = window.rect().contains(list.geometry());
    for (const QChar key : keys)
        if (key == u'!')
            other.setFocus();
        else if (named.contains(key))
            QTest::keyClick(QApplication::focusWidget(), named[key]);
        else
            QTest::keyClicks(QApplication::focusWidget(), key);
    const auto then = keys.contains(u'&') ? CellPicker::Then::Previous : CellPicker::Then::Next;
    if (!inside || !list.isHidden() || choices.size() + dismissals.size() != 1 ||
        (!choices.isEmpty() && choices[0][1].value<CellPicker::Then>() != then))
        return -2;
    return choices.isEmpty() ? -1 : choices[0][0].toInt();
}

} // namespace

class TestPickers : public QObject
{
    Q_OBJECT

private slots:
    void picker()
    {
        QCOMPARE(chosenBy(1, {}, u"v~"_s), 2);
        QCOMPARE(chosenBy(-1, {}, u"~^"_s), -1);
        QCOMPARE(chosenBy(3, u" "_s, u"~"_s), 3);
        QCOMPARE(chosenBy(0, {}, u" ~"_s), 5); // a blank means the blank entry
        QCOMPARE(chosenBy(0, {}, u"}~"_s), 7);
        QCOMPARE(chosenBy(3, {}, u"{~"_s), 0);
        QCOMPARE(chosenBy(2, {}, u">"_s), 2);
        QCOMPARE(chosenBy(2, {}, u"&"_s), 2);
        QCOMPARE(chosenBy(1, {}, u"^"_s), -1);
        QCOMPARE(chosenBy(1, {}, u"!"_s), -1);
    }

    void search()
    {
        QCOMPARE(chosenBy(0, u"S"_s, u"~"_s), 3); // an exact code before a longer one
        QCOMPARE(chosenBy(0, u"S"_s, u"E~"_s), 4);
        QCOMPARE(chosenBy(0, u"s"_s, u"er~"_s), 2);
        QCOMPARE(chosenBy(0, u"V"_s, u"e~"_s), 6);
        QCOMPARE(chosenBy(0, u"v"_s, u"e~"_s), 7); // letter case where it is there
        QCOMPARE(chosenBy(0, u"s"_s, u"e~"_s), 4);
        QCOMPARE(chosenBy(0, u"0"_s, u".35~"_s), 4);
        QCOMPARE(chosenBy(0, u"0"_s, u",9~"_s), 1);
        QCOMPARE(chosenBy(0, u"1"_s, u"~"_s), 0); // a whole value before a longer one
        QCOMPARE(chosenBy(1, u"C"_s, u"antina~^"_s), -1);
        QCOMPARE(chosenBy(1, u"B"_s, u"X<~"_s), 1);
        QCOMPARE(chosenBy(1, u"S"_s, u"<<~"_s), 1);
    }

    void contextMenu()
    {
        ContextMenu menu;
        menu.DxMouse(3).setText(u"Elimina"_s);
        menu.DxMouse(3).setVisible(true);
        QTimer::singleShot(0, this, [&menu] {
            QTest::mouseClick(&menu, Qt::LeftButton, {},
                              menu.actionGeometry(&menu.DxMouse(3)).center());
        });
        QCOMPARE(menu.choose({}), 3);
        QTimer::singleShot(0, this, [&menu] { QTest::keyClick(&menu, Qt::Key_Escape); });
        QCOMPARE(menu.choose({}), -1);

        menu.DxMouse(3).setEnabled(false);
        menu.ResetContextMenu();
        QVERIFY(menu.DxMouse(0).isVisible() && !menu.DxMouse(3).isVisible());
        menu.DxMouse(3).setVisible(true);
        QVERIFY(menu.DxMouse(3).isEnabled() && menu.DxMouse(3).text().isEmpty());
    }
};

ZELTO_TEST(TestPickers)
#include "tst_pickers.moc"
