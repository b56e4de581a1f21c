// SPDX-License-Identifier: GPL-3.0-or-later
// What hurried hands do to the register: every row is one way in which a key once changed something
// else than what the screen showed.
#include "parametri_desk.h"
#include "support/runner.h"
#include "widgets/typed_line.h"

#include <QAction>
#include <QCheckBox>
#include <QClipboard>
#include <QHeaderView>
#include <QToolBar>

using namespace zelto;
using test::Desk;
using test::press;
using test::RegisterState;

/// What is done before keys are pressed.
using Step = std::function<void(Desk&)>;
Q_DECLARE_METATYPE(Step)

namespace {

Step copied(const QString& text)
{
    return [text](Desk&) { QApplication::clipboard()->setText(text); };
}

void chooseScalaB(Desk& desk)
{
    desk.filter(u"CodScala"_s, u"B"_s);
}

/// The keys go to the first cell of the list, or on; the changes are in the order of the records.
void row(const char* name, const QString& keys, const QString& changed, const Step& first = {})
{
    QTest::newRow(name) << first << keys << changed;
}

// Keys to the other panels and columns.
const QString Field = u"<Ctrl+Tab>"_s;
const QString Room = Field + Field;
const QString Third = u"<Right><Right>"_s;
const QString Flags = Third + Third;

} // namespace

class TestKeystrokes : public QObject
{
    Q_OBJECT

private slots:
    void keystrokes_data()
    {
        QTest::addColumn<Step>("first");
        QTest::addColumn<QString>("keys");
        QTest::addColumn<QString>("changed");
        rowsOfChanges();
        rowsOfPlaces();
        rowsOfTyping();
    }
    void keystrokes()
    {
        QFETCH(Step, first);
        QFETCH(QString, keys);
        QFETCH(QString, changed);
        Desk desk;
        const RegisterState before(desk.job);
        const QString viewBefore = desk.views();
        if (first)
            first(desk);
        press(keys);
        const RegisterState after(desk.job);
        QCOMPARE(before.differencesTo(after).join(u' '), changed);
        for (const QString& list : {u"Livello"_s, u"CodScala"_s})
            desk.filter(list, u" "_s);
        const int unit = desk.tree().selectedUnit();
        static const QRegularExpression emptyName(u"(UI:|V:)\\d+\n"_s);
        const QString patched = desk.views().replace(emptyName, u"-\n"_s);

        // All of it can be taken back and made again.
        int undone = 0;
        for (; desk.find<QAction>(u"Annulla"_s).isEnabled(); ++undone)
            desk.find<QAction>(u"Annulla"_s).trigger();
        QCOMPARE(before.differencesTo(RegisterState(desk.job)), QStringList());
        emit desk.tree().unitSelected(1);
        QCOMPARE(desk.views(), viewBefore);
        for (; undone > 0; --undone)
            desk.find<QAction>(u"Ripeti"_s).trigger();
        QCOMPARE(after.differencesTo(RegisterState(desk.job)), QStringList());

        // Another screen shows the same as the one that was patched, but for empty names.
        desk.reopen();
        emit desk.tree().unitSelected(unit);
        QCOMPARE(desk.views().replace(emptyName, u"-\n"_s), patched);
        QCOMPARE(desk.user.said(), QString());
    }

    /// So many keys do for a unit with five rooms and two tables, each coefficient by one letter
    /// and Enter; 78 of them write names and figures.
    void keysForAUnit()
    {
        Desk desk;
        const RegisterState before(desk.job);
        int pressed = press(u"<Ins>Int. 1 - Ferri<Tab>Piano primo<Tab>A<Return>3,5<Tab> <Right> "
                            "<Ctrl+Tab><Ctrl+Tab>"_s);
        for (const QString& add : {u""_s, u"<Ins>"_s, u"<Ins>"_s, u"<Ins>"_s, u"<Ins>"_s})
            pressed += press(add + u"Camera<Tab>12,5<Tab>C<Return>S<Return>P<Return>O<Return>"
                                   "P<Return>S<Return>"_s);
        QCOMPARE(pressed, 163);
        const QString found = before.differencesTo(RegisterState(desk.job)).join(u' ');
        QCOMPARE(found, u"+33 33/+1 33/+2 33/+3 33/+4 33/+5"_s);
        const QString dump = desk.dump();
        QVERIFY(
            dump.contains(u"[   33] [33] [Int. 1 - Ferri] [Piano primo] [A] [3.5] [XX        ]"));
        QCOMPARE(
            dump.count(u"[Camera] [12.5] [[Camera]] [[S]] [[Parco]] [[Ottima]] [[Piena]] [[S1]]"_s),
            5);
    }

private:
    static void rowsOfChanges()
    {
        // What a unit and its rooms are changed by.
        row("staircase by its list", u"<Down>"_s + Third + u"B<Return>"_s, u"2.Codice scala=B"_s);
        row("no staircase", u"<Down>"_s + Third + u"<F2><Home><Return>"_s, u"2.Codice scala="_s);
        row("flag", Flags + u"<Space>"_s, u"1.Flag tabelle=XX        "_s);
        row("only a capital X is a flag", Flags + u"<Ctrl+V>"_s, {}, copied(u"x"_s));
        row("flag of a table without a name", u"<End><Space>"_s, {});
        row("staircase of the field", u"B<Return>"_s, u"1.Codice scala=B"_s, [](Desk& desk) {
            desk.tabs().setCurrentIndex(1);
            QTest::mouseDClick(&desk.find<QWidget>(u"Dati2"_s), Qt::LeftButton);
        });
        row("check box", {}, u"1.Flag tabelle=XX        "_s,
            [](Desk& desk) { desk.find<QCheckBox>(u"Check1_0"_s).click(); });
        row("range of units", u"<Down><Shift+Down><Ctrl+Del>"_s,
            u"-2 2/-1 2/-2 2/-3 -3 3/-1 3/-2 3/-3"_s);
        row("copies of units", u"<Shift+Down><Ctrl+D>"_s,
            u"+33 33/+1 33/+2 33/+3 +34 34/+1 34/+2 34/+3"_s);
        row("new room", Room + u"<Ins>"_s, u"1/+4"_s);
        row("range of rooms", Room + u"<Shift+Down><Shift+Down><Ctrl+Del>"_s, u"1/-1 1/-2 1/-3"_s);
        row("copies of rooms", Room + u"<Shift+Down><Ctrl+D>"_s, u"1/+4 1/+5"_s);

        // The selection goes where the current cell goes.
        row("delete after Ctrl+End", u"<Ctrl+End><Ctrl+Del>"_s, u"-32 32/-1"_s);
        row("copy after Ctrl+End", u"<Ctrl+End><Ctrl+D>"_s, u"+33 33/+1"_s);
        row("empty after Ctrl+Home", u"<Ctrl+End><Ctrl+Home><Del>"_s, u"1.Riferimento="_s);
        row("paste after Ctrl+End", u"<Ctrl+End><Home><Ctrl+V>"_s, u"32.Riferimento=x"_s,
            copied(u"x"_s));
        row("Ctrl+click begins anew", u"<Ctrl+Del>"_s, u"-5 5/-1 5/-2 5/-3 5/-4 5/-5"_s,
            [](Desk& desk) {
                desk.click(1);
                desk.click(4, Qt::ControlModifier);
            });
        row("header and Del", u"<Del>"_s, u"1.Riferimento="_s, [](Desk& desk) {
            QTest::mouseClick(desk.units().horizontalHeader()->viewport(), Qt::LeftButton, {},
                              {20, 5});
        });
    }
    static void rowsOfPlaces()
    {
        // The current unit is the one that the screen names.
        row("rooms of a unit that is not listed", u"Atrio<Down>Salone<Down>"_s,
            u"6/1.Ambiente=Atrio 6/2.Ambiente=Salone"_s, [](Desk& desk) {
                chooseScalaB(desk);
                desk.clickNode(u"A/1 - Bellandi"_s);
                desk.goTo(desk.rooms());
            });
        row("no commands on the list without the unit",
            u"<Ctrl+Del><Ctrl+D><Del><Ins>x<Return><Ctrl+Shift+Down>"_s, {}, chooseScalaB);
        row("first row of a staircase", u"x<Return>"_s, u"5.Riferimento=x"_s, [](Desk& desk) {
            chooseScalaB(desk);
            desk.click(0);
        });
        row("last row of a floor", u"x<Return>"_s, u"16.Riferimento=x"_s, [](Desk& desk) {
            desk.filter(u"Livello"_s, u"Piano primo"_s);
            desk.click(3);
        });
        row("first row of both", u"x<Return>"_s, u"15.Riferimento=x"_s, [](Desk& desk) {
            desk.filter(u"Livello"_s, u"Piano primo"_s);
            chooseScalaB(desk);
            desk.click(0);
        });
        row("typed after a copy", u"<Down><Down><Down><Down><Ctrl+D>Copia<Return>"_s,
            u"+33 33/+1 33/+2 33/+3 33/+4 33/+5"_s);
        row("typed after a copy of rooms", Room + u"<Ctrl+D>Copia<Return>"_s, u"1/+4"_s);
        row("click on a room's node", u"Tinello<Return>"_s, u"6/3.Ambiente=Tinello"_s,
            [](Desk& desk) {
                desk.tree().expandAll();
                desk.clickNode(u"Cucina"_s, u"A/1 - Bellandi"_s);
            });
        row("found by a part", u"<Ctrl+F>alva<Esc>x<Return>"_s, u"20.Riferimento=x"_s);
        row("found next", u"<Ctrl+F>bella<F3><Esc>x<Return>"_s, u"24.Riferimento=x"_s);
        row("next unit and back", Room + u"<Alt+Down>A<Alt+Down>B<Alt+Up><Alt+Up>C<Alt+Down>"_s,
            u"1/1.Ambiente=C 2/1.Ambiente=A 3/1.Ambiente=B"_s);
        row("field typed before the next unit", Field + u"<Tab><End>x<Alt+Down>"_s,
            u"1.Livello=Piano terrax"_s);
        row("undo goes to its unit", u"a<Return><Down><Down><Down><Ctrl+Z><Down>x<Return>"_s,
            u"2.Riferimento=x"_s);
        row("undo from field to field", u"a<Return>"_s + Field + u"<Tab>b<Tab><Ctrl+Z><Ctrl+Z>"_s,
            {});
        row("undo of an added unit", u"<Ins><Ctrl+Z><Ctrl+Home>x<Return>"_s, u"1.Riferimento=x"_s);
    }
    static void rowsOfTyping()
    {
        // Commas
        row("comma in a size", Room + u"<Right>12,5<Return>"_s, u"1/1.Consistenza reale=12.5"_s);
        row("comma in a height", Third + u"<Right>3,25<Return>"_s, u"1.H piano=3.25"_s);
        row("comma in the height's field", Field + u"<Tab><Tab><Tab><Shift+Home>3,25<Return>"_s,
            u"1.H piano=3.25"_s);
        row("pasted sizes and coefficients", Room + u"<Right><Ctrl+V>"_s,
            u"1/1.Consistenza reale=12.5 1/1.Destinazione=0.35 1/1.Orientamento=[A,B]"_s,
            copied(u"12,5\t0,35\t[A,B]"_s));

        // Keys that are no text
        row("Alt and Super", u"<Alt+D><Meta+D><Alt+Shift+D><Ctrl+Alt+D>"_s, {});
        row("F2 and Enter", Room + u"<Right><F2><Return>"_s, {});
        row("Annulla by the mouse, then typing", u"x<Return>"_s, u"1.Riferimento=x"_s,
            [](Desk& desk) {
                press(u"a<Return>"_s);
                auto* bar = desk.screen->findChild<QToolBar*>();
                QTest::mouseClick(bar->widgetForAction(&desk.find<QAction>(u"Annulla"_s)),
                                  Qt::LeftButton);
            });

        // Pickers
        row("SE", Room + Third + u"<Right>SE<Return>"_s, u"1/1.Orientamento=[SE]"_s);
        row("a name that no entry has", Room + Third + u"Caldaia<Return><Esc>"_s, {});
        row("a value with a comma", Room + Third + u"0,35<Return>"_s,
            u"1/1.Destinazione=[Cantina]"_s);
        row("one letter each, Enter goes on", Room + Third + u"C<Return>N<Return>P<Return>"_s,
            u"1/1.Destinazione=[Camera] 1/1.Orientamento=[N]"_s);
        row("Tab goes on as well", Room + Third + u"C<Tab>N<Shift+Tab>B<Return>"_s,
            u"1/1.Destinazione=[BalcCop] 1/1.Orientamento=[N]"_s);
        row("nothing", Room + Third + u"<Right><F2> <Return>"_s, u"1/1.Orientamento="_s);

        // Fast hands
        row("Tab in an open editor", u"a<Tab>b<Tab><Return>5<Tab>"_s,
            u"1.H piano=5 1.Livello=b 1.Riferimento=a"_s);
        row("Shift+Tab", Room + u"<Right>5<Shift+Tab>Sala<Return>"_s,
            u"1/1.Ambiente=Sala 1/1.Consistenza reale=5"_s);
        row("a block longer than the rooms", Room + u"<Ctrl+End><Home><Ctrl+V>"_s,
            u"1/3.Ambiente=a 1/3.Consistenza reale=1.5 1/+4 1/+5"_s,
            copied(u"a\t1,5\nb\t2\nc\t3\n"_s));
        row("a block longer than the units", u"<Ctrl+End><Home><Ctrl+V>"_s,
            u"32.Riferimento=a +33 33/+1"_s, copied(u"a\nb\n"_s));
        row("room moved down", Room + u"<Ctrl+Shift+Down>x<Return>"_s,
            u"1/1.Ambiente=Retro 1/1.Consistenza reale=15.20 1/1.Destinazione=[Retro] "
            "1/1.Luminosità=[Scarsa] 1/1.Orientamento=[N] 1/1.Prospetto=[Cortile] "
            "1/2.Ambiente=x 1/2.Consistenza reale=48.35 1/2.Destinazione=[Negozio] "
            "1/2.Luminosità=[Ottima] 1/2.Orientamento=[SO] 1/2.Prospetto=[Parco]"_s);
        row("unit moved up and back", u"<Down><Ctrl+Shift+Up><Ctrl+Shift+Down>x<Return>"_s,
            u"2.Riferimento=x"_s);
        row("range moved", u"<Shift+Down><Ctrl+Shift+Down><Del>"_s,
            u"1.Codice scala= 1.H piano= 1.Riferimento=Negozio 3 - Farmacia "
            "1/1.Consistenza reale=71.15 1/1.Orientamento=[S] 1/2.Consistenza reale=24.60 "
            "1/3.Consistenza reale=4.10 2.Riferimento= 2/1.Consistenza reale=48.35 "
            "2/1.Orientamento=[SO] 2/2.Consistenza reale=15.20 2/3.Consistenza reale=3.40 "
            "3.Codice scala=A 3.H piano=0 3.Riferimento= 3/1.Consistenza reale=62.70 "
            "3/2.Consistenza reale=18.45 3/3.Consistenza reale=3.85"_s);
    }
};

ZELTO_TEST(TestKeystrokes)
#include "tst_keystrokes.moc"
