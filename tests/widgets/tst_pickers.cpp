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

class TestPickers : public QObject
{
    Q_OBJECT

private slots:
    /// Keys in an open list: "~" Enter, "^" Esc, "<" Backspace, "{" Home, "}" End, "v" Down,
    /// ">" Tab, "&" Shift+Tab, "!" leaves for another field.
    void picker_data()
    {
        QTest::addColumn<int>("current");
        QTest::addColumn<QString>("opener");
        QTest::addColumn<QString>("keys");
        QTest::addColumn<int>("chosen"); // -1: left without a choice
        const auto row = [](const char* name, int current, const QString& opener,
                            const QString& keys, int chosen) {
            QTest::addRow("%s", name) << current << opener << keys << chosen;
        };
        row("below what was selected", 1, {}, u"v~"_s, 2);
        row("nothing selected", -1, {}, u"~^"_s, -1);
        row("exact code before a longer one", 0, u"S"_s, u"~"_s, 3);
        row("two characters", 0, u"S"_s, u"E~"_s, 4);
        row("other letter case", 0, u"s"_s, u"er~"_s, 2);
        row("letter case that is there", 0, u"s"_s, u"e~"_s, 4);
        row("value", 0, u"0"_s, u".35~"_s, 4);
        row("value with a comma", 0, u"0"_s, u",9~"_s, 1);
        row("whole value before a longer one", 0, u"1"_s, u"~"_s, 0);
        row("no match", 1, u"C"_s, u"antina~^"_s, -1);
        row("no match, taken back", 1, u"B"_s, u"X<~"_s, 1);
        row("all taken back", 1, u"S"_s, u"<<~"_s, 1);
        row("blank by its key", 0, {}, u" ~"_s, 5);
        row("blank at the end", 0, {}, u"}~"_s, 5);
        row("opened by a blank", 3, u" "_s, u"~"_s, 3);
        row("Tab", 2, {}, u">"_s, 2);
        row("Shift+Tab", 2, {}, u"&"_s, 2);
        row("left", 1, {}, u"^"_s, -1);
        row("focus lost", 1, {}, u"!"_s, -1);
    }
    void picker()
    {
        QFETCH(int, current);
        QFETCH(QString, opener);
        QFETCH(QString, keys);
        QFETCH(int, chosen);
        QWidget window;
        window.resize(300, 200);
        QLineEdit other(&window);
        CellPicker list(&window);
        QSignalSpy choices(&list, &CellPicker::chosen);
        QSignalSpy dismissals(&list, &CellPicker::dismissed);
        window.show();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        list.open({{u"A"_s, u"1"_s, {}},
                   {u"B"_s, u"0,9"_s, {}},
                   {u"SER"_s, u"1.2"_s, {}},
                   {u"S"_s, u"1.1"_s, {}},
                   {u"se"_s, u"0.35"_s, u"Servizi"_s},
                   {}},
                  current, {10, 190, 80, 20}, opener);
        QVERIFY(window.rect().contains(list.geometry()));
        static const QHash<QChar, Qt::Key> named{
            {u'~', Qt::Key_Return}, {u'^', Qt::Key_Escape}, {u'<', Qt::Key_Backspace},
            {u'{', Qt::Key_Home},   {u'}', Qt::Key_End},    {u'v', Qt::Key_Down},
            {u'>', Qt::Key_Tab},    {u'&', Qt::Key_Backtab}};
        for (const QChar key : keys)
            if (key == u'!')
                other.setFocus();
            else if (named.contains(key))
                QTest::keyClick(QApplication::focusWidget(), named[key]);
            else
                QTest::keyClicks(QApplication::focusWidget(), key);
        QVERIFY(list.isHidden());
        QCOMPARE(choices.size() + dismissals.size(), 1);
        QCOMPARE(choices.isEmpty() ? -1 : choices[0][0].toInt(), chosen);
        if (keys.contains(u'&'))
            QCOMPARE(choices[0][1].value<CellPicker::Then>(), CellPicker::Then::Previous);
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
