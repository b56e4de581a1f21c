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
#include <QToolButton>

using namespace zelto;
using namespace zelto::registro;
using test::Desk;
using test::RegisterState;

using Action = std::function<void(Desk&)>;
Q_DECLARE_METATYPE(Action)

namespace {

void clip(const QString& text)
{
    QApplication::clipboard()->setText(text);
}

void toUnit(Desk& desk, const QString& keys)
{
    desk.show(0);
    desk.units().setFocus();
    Desk::keys(keys);
}

void toRooms(Desk& desk, const QString& keys)
{
    desk.show(2);
    desk.rooms().setFocus();
    Desk::keys(keys);
}

} // namespace

class TestKeystrokes : public QObject
{
    Q_OBJECT

private slots:
    void keystrokes_data()
    {
        QTest::addColumn<Action>("act");
        QTest::addColumn<QString>("changed"); // in the order of the keys, "*" for any more
        const auto row = [](const char* name, const QString& changed, const Action& act) {
            QTest::addRow("%s", name) << act << changed;
        };
        const auto units = [&row](const char* name, const QString& keys, const QString& changed) {
            row(name, changed, [keys](Desk& desk) { toUnit(desk, keys); });
        };
        const auto rooms = [&row](const char* name, const QString& keys, const QString& changed) {
            row(name, changed, [keys](Desk& desk) { toRooms(desk, keys); });
        };

        // What a unit and its rooms are changed by.
        const QString toFlags = u"<Right><Right><Right><Right>"_s;
        units("staircase by its list", u"<Down><Right><Right>B<Return>"_s, u"2.Codice scala=B"_s);
        units("no staircase", u"<Down><Right><Right><F2><Home><Return>"_s, u"2.Codice scala="_s);
        units("flag", toFlags + u"<Space>"_s, u"1.Flag tabelle=XX        "_s);
        row("staircase of the field", u"1.Codice scala=B"_s, [](Desk& desk) {
            desk.show(1);
            QTest::mouseDClick(&desk.find<QWidget>(u"Dati2"_s), Qt::LeftButton);
            Desk::keys(u"B<Return>"_s);
        });
        row("check box", u"1.Flag tabelle=XX        "_s, [](Desk& desk) {
            desk.show(1);
            desk.find<QCheckBox>(u"Check1_0"_s).click();
        });
        units("range of units", u"<Down><Shift+Down><Ctrl+Del>"_s,
              u"-2 2/-1 2/-2 2/-3 -3 3/-1 3/-2 3/-3"_s);
        units("copies of units", u"<Shift+Down><Ctrl+D>"_s,
              u"+33 33/+1 33/+2 33/+3 +34 34/+1 34/+2 34/+3"_s);
        rooms("new room", u"<Ins>"_s, u"1/+4"_s);
        rooms("range of rooms", u"<Shift+Down><Shift+Down><Ctrl+Del>"_s, u"1/-1 1/-2 1/-3"_s);
        rooms("copies of rooms", u"<Shift+Down><Ctrl+D>"_s, u"1/+4 1/+5"_s);

        // The selection goes where the current cell goes.
        units("delete after Ctrl+End", u"<Ctrl+End><Ctrl+Del>"_s, u"-32 32/-1"_s);
        units("copy after Ctrl+End", u"<Ctrl+End><Ctrl+D>"_s, u"+33 33/+1"_s);
        units("empty after Ctrl+Home", u"<Ctrl+End><Ctrl+Home><Del>"_s, u"1.Riferimento="_s);
        row("paste after Ctrl+End", u"32.Riferimento=x"_s, [](Desk& desk) {
            clip(u"x"_s);
            toUnit(desk, u"<Ctrl+End><Home><Ctrl+V>"_s);
        });
        row("Ctrl+click begins anew", u"-5 5/-1 5/-2 5/-3 5/-4 5/-5"_s, [](Desk& desk) {
            desk.click(desk.units(), 1, 0);
            desk.click(desk.units(), 4, 0, Qt::ControlModifier);
            Desk::keys(u"<Ctrl+Del>"_s);
        });
        row("header and Del", u"1.Riferimento="_s, [](Desk& desk) {
            QTest::mouseClick(desk.units().horizontalHeader()->viewport(), Qt::LeftButton, {},
                              {20, 5});
            Desk::keys(u"<Del>"_s);
        });

        // The current unit is the one that the screen names.
        row("rooms of a unit that is not listed", u"6/1.Ambiente=Atrio 6/2.Ambiente=Salone"_s,
            [](Desk& desk) {
                desk.filter(u"CodScala"_s, u"B"_s);
                desk.clickNode(u"A/1 - Bellandi"_s);
                toRooms(desk, u"Atrio<Down>Salone<Down>"_s);
            });
        row("no commands on the list without the unit", {}, [](Desk& desk) {
            desk.filter(u"CodScala"_s, u"B"_s);
            toUnit(desk, u"<Ctrl+Del><Ctrl+D><Del><Ins>x<Return><Ctrl+Shift+Down>"_s);
        });
        row("click on the filtered list's first row", u"5.Riferimento=x"_s, [](Desk& desk) {
            desk.filter(u"CodScala"_s, u"B"_s);
            desk.click(desk.units(), 0, 0);
            Desk::keys(u"x<Return>"_s);
        });
        row("typed after a copy", u"+33 33/+1 33/+2 33/+3 33/+4 33/+5"_s,
            [](Desk& desk) { toUnit(desk, u"<Down><Down><Down><Down><Ctrl+D>Copia<Return>"_s); });
        rooms("typed after a copy of rooms", u"<Ctrl+D>Copia<Return>"_s, u"1/+4"_s);
        row("click on a room's node", u"6/3.Ambiente=Tinello"_s, [](Desk& desk) {
            desk.tree().expandAll();
            desk.clickNode(u"Cucina"_s, u"A/1 - Bellandi"_s);
            Desk::keys(u"Tinello<Return>"_s);
        });
        row("found by a part of its reference", u"20.Riferimento=x"_s,
            [](Desk&) { Desk::keys(u"<Ctrl+F>alva<Esc>x<Return>"_s); });
        row("found next", u"24.Riferimento=x"_s,
            [](Desk&) { Desk::keys(u"<Ctrl+F>bella<F3><Esc>x<Return>"_s); });
        rooms("next unit and back", u"<Alt+Down>A<Alt+Down>B<Alt+Up><Alt+Up>C<Alt+Down>"_s,
              u"1/1.Ambiente=C 2/1.Ambiente=A 3/1.Ambiente=B"_s);
        row("field typed before the next unit", u"1.Livello=Piano terrax"_s, [](Desk& desk) {
            desk.show(1);
            desk.find<widgets::TypedLine>(u"Dati1"_s).setFocus(Qt::TabFocusReason);
            Desk::keys(u"<End>x<Alt+Down>"_s);
        });
        row("undo from another unit", u"2.Riferimento=x"_s, [](Desk& desk) {
            toUnit(desk, u"a<Return><Down><Down><Down><Ctrl+Z>"_s); // goes to unit 1
            desk.click(desk.units(), 1, 0);
            Desk::keys(u"x<Return>"_s);
        });

        row("undo from field to field", {}, [](Desk& desk) {
            toUnit(desk, u"a<Return>"_s);
            desk.show(1);
            auto& field = desk.find<widgets::TypedLine>(u"Dati1"_s);
            field.setFocus();
            Desk::keys(u"b<Tab><Ctrl+Z><Ctrl+Z>"_s);
        });
        row("undo of an added unit", u"1.Riferimento=x"_s, [](Desk& desk) {
            toUnit(desk, u"<Ins><Ctrl+Z>"_s);
            QCOMPARE(desk.find<QTabWidget>(u"tbsOptions"_s).currentIndex(), 0);
            Desk::keys(u"<Ctrl+Home>x<Return>"_s);
        });

        // Commas
        rooms("comma in a size", u"<Right>12,5<Return>"_s, u"1/1.Consistenza reale=12.5"_s);
        units("comma in a height", u"<Right><Right><Right>3,25<Return>"_s, u"1.H piano=3.25"_s);
        row("comma in the height's field", u"1.H piano=3.25"_s, [](Desk& desk) {
            desk.show(1);
            desk.find<widgets::TypedLine>(u"Dati3"_s).setFocus();
            Desk::keys(u"<Shift+Home>3,25<Return>"_s);
        });
        row("pasted sizes and coefficients",
            u"1/1.Consistenza reale=12.5 1/1.Destinazione=0.35 1/1.Orientamento=[A,B]"_s,
            [](Desk& desk) {
                clip(u"12,5\t0,35\t[A,B]"_s);
                toRooms(desk, u"<Right><Ctrl+V>"_s);
            });
        row("pasted thousands are refused", {}, [](Desk& desk) {
            clip(u"Sala\t1.234,50"_s);
            toRooms(desk, u"<Ctrl+V>"_s);
            QVERIFY(desk.user.said().contains(u"«1.234,50»"));
        });

        // Keys that are no text
        units("Alt and Super", u"<Alt+D><Meta+D><Alt+Shift+D><Ctrl+Alt+D>"_s, {});
        rooms("F2 and Enter", u"<Right><F2><Return>"_s, {});
        row("Annulla by the mouse, then typing", u"1.Riferimento=x"_s, [](Desk& desk) {
            toUnit(desk, u"a<Return>"_s);
            auto* bar = desk.screen->findChild<QToolBar*>();
            QTest::mouseClick(bar->widgetForAction(&desk.find<QAction>(u"Annulla"_s)),
                              Qt::LeftButton);
            Desk::keys(u"x<Return>"_s);
        });

        // Pickers
        const QString toOrient = u"<Right><Right><Right>"_s;
        rooms("SE", toOrient + u"SE<Return>"_s, u"1/1.Orientamento=[SE]"_s);
        rooms("a name that no entry has", u"<Right><Right>Caldaia<Return><Esc>"_s, {});
        rooms("a value with a comma", u"<Right><Right>0,35<Return>"_s,
              u"1/1.Destinazione=[Cantina]"_s);
        rooms("one letter each, Enter goes on", u"<Right><Right>C<Return>N<Return>P<Return>"_s,
              u"1/1.Destinazione=[Camera] 1/1.Orientamento=[N]"_s);
        rooms("Tab goes on as well", u"<Right><Right>C<Tab>N<Shift+Tab>B<Return>"_s,
              u"1/1.Destinazione=[BalcCop] 1/1.Orientamento=[N]"_s);
        rooms("nothing", toOrient + u"<F2> <Return>"_s, u"1/1.Orientamento="_s);

        // Fast hands
        units("Tab in an open editor", u"a<Tab>b<Tab><Return>5<Tab>"_s,
              u"1.H piano=5 1.Livello=b 1.Riferimento=a"_s);
        rooms("Shift+Tab", u"<Right>5<Shift+Tab>Sala<Return>"_s,
              u"1/1.Ambiente=Sala 1/1.Consistenza reale=5"_s);
        row("a block longer than the rooms",
            u"1/3.Ambiente=a 1/3.Consistenza reale=1.5 1/+4 1/+5"_s, [](Desk& desk) {
                clip(u"a\t1,5\nb\t2\nc\t3\n"_s);
                toRooms(desk, u"<Ctrl+End><Home><Ctrl+V>"_s);
            });
        row("a block longer than the units", u"32.Riferimento=a +33 33/+1"_s, [](Desk& desk) {
            clip(u"a\nb\n"_s);
            toUnit(desk, u"<Ctrl+End><Home><Ctrl+V>"_s);
        });
        row("a block beyond the limit of rooms", {}, [](Desk& desk) {
            clip(u"a\n"_s.repeated(51));
            toRooms(desk, u"<Ctrl+V>"_s);
            QVERIFY(desk.user.said().contains(u"ce ne stanno solo 50"));
        });
        rooms("room moved down", u"<Ctrl+Shift+Down>x<Return>"_s,
              u"1/1.Ambiente=Retro 1/1.Consistenza reale=15.20 1/1.Destinazione=[Retro] "
              "1/1.Luminosità=[Scarsa] 1/1.Orientamento=[N] 1/1.Prospetto=[Cortile] "
              "1/2.Ambiente=x 1/2.Consistenza reale=48.35 1/2.Destinazione=[Negozio] "
              "1/2.Luminosità=[Ottima] 1/2.Orientamento=[SO] 1/2.Prospetto=[Parco]"_s);
        row("unit moved up and back", u"2.Riferimento=x"_s,
            [](Desk& desk) { toUnit(desk, u"<Down><Ctrl+Shift+Up><Ctrl+Shift+Down>x<Return>"_s); });
        row("range moved", u"1.Riferimento=Negozio 3 - Farmacia 1.Codice scala= *"_s,
            [](Desk& desk) {
                toUnit(desk, u"<Shift+Down><Ctrl+Shift+Down>"_s);
                QCOMPARE(desk.units().selectedRows().first, 1);
                QCOMPARE(desk.units().selectedRows().last, 2);
            });
    }
    void keystrokes()
    {
        QFETCH(Action, act);
        QFETCH(QString, changed);
        Desk desk;
        const RegisterState before(desk.job);
        const QString viewBefore = desk.views();
        act(desk);
        const RegisterState after(desk.job);
        const QString found = before.differencesTo(after).join(u' ');
        if (changed.endsWith(u'*')) {
            for (const QString& expected : changed.chopped(2).split(u" 1."_s))
                QVERIFY2(found.contains(expected), qPrintable(found));
        } else {
            QCOMPARE(found, changed);
        }
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
        desk.open();
        emit desk.tree().unitSelected(unit);
        QCOMPARE(desk.views().replace(emptyName, u"-\n"_s), patched);
        QCOMPARE(desk.user.said(), QString());
    }

    /// Keys for one unit with five rooms and two tables, coefficients by one letter each, beside
    /// its names and figures.
    void keysForAUnit()
    {
        Desk desk;
        const RegisterState before(desk.job);
        int pressed = 0;
        const auto key = [&](const QString& script) { pressed += Desk::keys(script); };
        const auto text = [](const QString& script) { Desk::keys(script); };
        key(u"<Ins>"_s);
        text(u"Int. 1 - Ferri"_s);
        key(u"<Tab>"_s);
        text(u"Piano primo"_s);
        key(u"<Tab>A<Return>"_s);
        text(u"3,5"_s);
        key(u"<Tab> <Right> <Ctrl+Tab><Ctrl+Tab>"_s);
        for (int room = 0; room < 5; ++room) {
            if (room > 0)
                key(u"<Ins>"_s);
            text(u"Camera"_s);
            key(u"<Tab>"_s);
            text(u"12,5"_s);
            key(u"<Tab>C<Return>S<Return>P<Return>O<Return>P<Return>S<Return>"_s);
        }
        qInfo("%d keys", pressed);
        QVERIFY(pressed <= 85);
        const QString found = before.differencesTo(RegisterState(desk.job)).join(u' ');
        QCOMPARE(found, u"+33 33/+1 33/+2 33/+3 33/+4 33/+5"_s);
        const QString dump = desk.dump();
        QVERIFY(
            dump.contains(u"[   33] [33] [Int. 1 - Ferri] [Piano primo] [A] [3.5] [XX        ]"));
        QCOMPARE(
            dump.count(u"[Camera] [12.5] [[Camera]] [[S]] [[Parco]] [[Ottima]] [[Piena]] [[S1]]"_s),
            5);
    }
};

ZELTO_TEST(TestKeystrokes)
#include "tst_keystrokes.moc"
