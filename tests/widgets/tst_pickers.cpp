// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/runner.h"
#include "support/window.h"
#include "widgets/cell_picker.h"
#include "widgets/context_menu.h"

#include <QLineEdit>
#include <QSignalSpy>
#include <QTimer>

using namespace Qt::StringLiterals;
using namespace zelto::widgets;
using zelto::test::press;

namespace {

/// The entry that the keys choose in an open list, -1 when they leave it without a choice; without
/// keys the focus leaves it. The list opens with an entry selected and by a character.
int chosenBy(int current, const QString& opener, const QString& keys)
{
    QWidget window;
    window.resize(300, 200);
    QLineEdit other(&window);
    CellPicker list(&window);
    QSignalSpy choices(&list, &CellPicker::chosen);
    QSignalSpy dismissals(&list, &CellPicker::dismissed);
    zelto::test::appear(window);
    list.open({{u"A"_s, u"1"_s, {}},
               {u"B"_s, u"0,9"_s, {}},
               {u"SER"_s, u"1.2"_s, {}},
               {u"S"_s, u"1.1"_s, {}},
               {u"se"_s, u"0.35"_s, u"Servizi"_s},
               {},
               {u"VERANDA"_s, u"2"_s, {}},
               {u"vetro"_s, u"3"_s, {}}},
              current, {10, 190, 80, 20}, opener);
    const bool inside = window.rect().contains(list.geometry());
    press(keys);
    const bool byKey = list.isHidden();
    other.setFocus();
    const auto then = keys.contains(u"Shift") ? CellPicker::Then::Previous : CellPicker::Then::Next;
    if (!inside || byKey == keys.isEmpty() || !list.isHidden() ||
        choices.size() + dismissals.size() != 1 ||
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
        QCOMPARE(chosenBy(1, {}, u"<Down><Return>"_s), 2);
        QCOMPARE(chosenBy(-1, {}, u"<Return><Esc>"_s), -1);
        QCOMPARE(chosenBy(3, u" "_s, u"<Return>"_s), 3);
        QCOMPARE(chosenBy(0, {}, u" <Return>"_s), 5); // a blank means the blank entry
        QCOMPARE(chosenBy(0, {}, u"<End><Return>"_s), 7);
        QCOMPARE(chosenBy(3, {}, u"<Home><Return>"_s), 0);
        QCOMPARE(chosenBy(2, {}, u"<Tab>"_s), 2);
        QCOMPARE(chosenBy(2, {}, u"<Shift+Tab>"_s), 2);
        QCOMPARE(chosenBy(1, {}, u"<Esc>"_s), -1);
        QCOMPARE(chosenBy(1, {}, {}), -1);
    }

    void search()
    {
        QCOMPARE(chosenBy(0, u"S"_s, u"<Return>"_s), 3); // an exact code before a longer one
        QCOMPARE(chosenBy(0, u"S"_s, u"E<Return>"_s), 4);
        QCOMPARE(chosenBy(0, u"s"_s, u"er<Return>"_s), 2);
        QCOMPARE(chosenBy(0, u"V"_s, u"e<Return>"_s), 6);
        QCOMPARE(chosenBy(0, u"v"_s, u"e<Return>"_s), 7); // letter case where it is there
        QCOMPARE(chosenBy(0, u"s"_s, u"e<Return>"_s), 4);
        QCOMPARE(chosenBy(0, u"0"_s, u".35<Return>"_s), 4);
        QCOMPARE(chosenBy(0, u"0"_s, u",9<Return>"_s), 1);
        QCOMPARE(chosenBy(0, u"1"_s, u"<Return>"_s), 0); // a whole value before a longer one
        QCOMPARE(chosenBy(1, u"C"_s, u"antina<Return><Esc>"_s), -1);
        QCOMPARE(chosenBy(1, u"B"_s, u"X<Backspace><Return>"_s), 1);
        QCOMPARE(chosenBy(1, u"S"_s, u"<Backspace><Backspace><Return>"_s), 1);
    }

    void contextMenu()
    {
        ContextMenu menu;
        menu.DxMouse(3).setText(u"Elimina"_s);
        menu.DxMouse(3).setVisible(true);
        QTimer::singleShot(0, this, [&menu] { zelto::test::chooseEntry(menu, menu.DxMouse(3)); });
        QCOMPARE(menu.choose({}), 3);
        QTimer::singleShot(0, this, [&menu] { press(u"<Esc>"_s, &menu); });
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
