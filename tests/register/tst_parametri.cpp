// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/shares.h"
#include "parametri_desk.h"
#include "support/accessible_names.h"
#include "support/runner.h"
#include "widgets/typed_line.h"

#include <QAction>
#include <QClipboard>
#include <QTimer>

using namespace zelto;
using namespace zelto::registro;

using test::Desk;
using test::press;
using test::RegisterState;

class TestParametri : public QObject
{
    Q_OBJECT

private slots:
    void opening()
    {
        Desk desk;
        const QString stored = desk.dump();
        QCOMPARE(desk.units().cells().rowCount(), 32);
        QCOMPARE(desk.tree().selectedUnit(), 1);
        QCOMPARE(desk.rooms().cells().rowCount(), 3);
        QCOMPARE(desk.find<widgets::TypedLine>(u"Dati0"_s).text(), desk.units().cells().text(0, 0));
        emit desk.tree().unitSelected(7);
        QCOMPARE(desk.units().currentRow(), 6);
        QCOMPARE(desk.status(), u"Consistenza 48.60 - Millesimi 26.398"_s);
        QCOMPARE(desk.dump(), stored);
    }

    void menus()
    {
        Desk desk;
        QStringList captions;
        connect(&desk.menu, &QMenu::aboutToShow, this, [&] {
            for (int entry = 0; entry < 3; ++entry)
                captions << desk.menu.DxMouse(entry).text();
            QTimer::singleShot(0, &desk.menu, &QMenu::close);
        });
        desk.goTo(desk.rooms());
        press(u"<Down><Shift+F10>"_s);
        press(u"<Shift+Up>"_s, &desk.rooms());
        emit desk.rooms().customContextMenuRequested({});
        desk.goTo(desk.units());
        press(u"<Shift+Down>"_s, &desk.units());
        emit desk.units().customContextMenuRequested({});
        QCOMPARE(captions.join(u'/'),
                 u"Aggiungi vano/Elimina vano Retro/Duplica vano Retro/"
                 "Aggiungi vano/Elimina vani da Vendita a Retro/Duplica vani da Vendita a Retro/"
                 "Aggiungi singola U.I./Elimina U.I. da Negozio 1 - Panificio a Negozio 2 - "
                 "Libreria/Duplica U.I. da Negozio 1 - Panificio a Negozio 2 - Libreria"_s);
    }

    /// What the job or the grid refuses is said, and the screen shows what is stored.
    void refusals()
    {
        Desk desk;
        const QString before = desk.dump();
        const QString viewBefore = desk.views();
        desk.job.Execute(u"PRAGMA query_only = 1"_s);
        desk.type(desk.rooms(), 0, 0, u"Altro"_s);
        QVERIFY(desk.user.said().startsWith(u"report: "));
        QCOMPARE(desk.views(), viewBefore);
        desk.goTo(desk.units());
        press(u"<Ctrl+Del>"_s);
        QVERIFY(desk.user.said().startsWith(u"report: "));
        desk.job.Execute(u"PRAGMA query_only = 0"_s);
        desk.goTo(desk.rooms());
        for (const auto& [text, reason] : {std::pair{u"Sala\t1.234,50"_s, u"«1.234,50»"_s},
                                           {u"a\n"_s.repeated(51), u"ce ne stanno solo 50"_s}}) {
            QApplication::clipboard()->setText(text);
            press(u"<Ctrl+Home><Ctrl+V>"_s);
            QVERIFY(desk.user.said().contains(reason));
        }
        QCOMPARE(desk.dump(), before);
        QCOMPARE(desk.views(), viewBefore);
    }

    /// A job that cannot be read for a while: the screen says so and goes on afterwards.
    void unreadable()
    {
        Desk desk;
        test::RawFile other(desk.folder.file(u"LAVORO.ZLT"_s));
        other.run("ALTER TABLE Vani RENAME TO Altrove");
        desk.units().setCurrentCell(5, 0);
        QVERIFY(desk.user.said().startsWith(u"report: "));
        desk.type(desk.rooms(), 0, 0, u"Sala"_s);
        QVERIFY(desk.user.said().startsWith(u"report: "));
        other.run("ALTER TABLE Altrove RENAME TO Vani");
        desk.units().setCurrentCell(6, 0);
        QCOMPARE(desk.rooms().cells().rowCount(), static_cast<int>(readRooms(desk.job, 7).size()));
        desk.type(desk.rooms(), 0, 0, u"Sala"_s);
        QCOMPARE(desk.user.said(), QString());
        QCOMPARE(textOf(readRooms(desk.job, 7).front(), RoomAmbiente), u"Sala"_s);
    }

    /// The screen says where the user is.
    void names()
    {
        Desk desk;
        desk.clickNode(u"A/1 - Bellandi"_s);
        const QLabel& title = desk.find<QLabel>(u"TitoloVani"_s);
        QCOMPARE(title.text(), u"Vani di A/1 - Bellandi, Piano primo"_s);
        desk.type(desk.rooms(), 0, 1, u"9"_s);
        const QAction& undo = desk.find<QAction>(u"Annulla"_s);
        QCOMPARE(undo.toolTip(), u"Annulla: consistenza di A/1 - Bellandi"_s);
        // A staircase that the tree does not have takes the unit out of it.
        desk.job.Execute(u"UPDATE [Unità immobiliari] SET [Codice scala] = 'Z' WHERE Chiave = "
                         "'    5'"_s);
        static_cast<Parametri&>(*desk.screen).refreshLists();
        desk.goTo(desk.units());
        desk.click(4);
        QCOMPARE(desk.tree().currentItem(), nullptr);
        QVERIFY(desk.tree().selectedItems().isEmpty());
        QCOMPARE(title.text(), u"Vani di Studio Zanfretta, Piano terra"_s);
    }

    /// What another program deleted is neither written to nor shown as stored.
    void deletedMeanwhile()
    {
        Desk desk;
        desk.job.Execute(u"DELETE FROM Vani WHERE Chiave = '    1    2'"_s);
        const RegisterState before(desk.job);
        desk.type(desk.rooms(), 1, 0, u"Fantasma"_s);
        QVERIFY(desk.user.said().startsWith(u"message: Un altro programma"));
        QVERIFY(!desk.views().contains(u"Fantasma"));
        QCOMPARE(desk.rooms().cells().rowCount(), 2);
        // Nor is anything written over what it changed, in this record or by another file.
        test::RawFile(desk.folder.file(u"LAVORO.ZLT"_s))
            .run("UPDATE Vani SET Ambiente = 'Altro' WHERE Chiave = '    1    1'");
        desk.type(desk.rooms(), 0, 0, u"Mio"_s);
        QVERIFY(desk.user.said().startsWith(u"message: Un altro programma"));
        QVERIFY(desk.views().contains(u"Altro") && !desk.dump().contains(u"Mio"));
        desk.type(desk.rooms(), 0, 0, u"Mio"_s);
        QVERIFY(desk.dump().contains(u"Mio"));
        desk.job.Execute(u"DELETE FROM [Unità immobiliari] WHERE [Riferimento unità] = 1"_s);
        desk.rooms().setFocus();
        press(u"<Ins>"_s);
        QCOMPARE(desk.user.said(), u"report: 3167"_s);
        QVERIFY(desk.find<QLabel>(u"TitoloVani"_s).text().contains(u"Libreria"));
        // Rooms without their unit keep their numbers.
        desk.job.Execute(u"UPDATE Vani SET [Riferimento unità] = 40, Chiave = '   40    1' WHERE "
                         "Chiave = '    1    1'"_s);
        desk.goTo(desk.units());
        press(u"<Ins>Nuova<Return>"_s);
        QCOMPARE(desk.user.said(), QString());
        QVERIFY(before.differencesTo(RegisterState(desk.job)).contains(u"+41"_s));
    }

    void withoutUnits()
    {
        Desk desk;
        press(u"<Ctrl+A><Ctrl+Del>"_s);
        const RegisterState nothing(desk.job);
        QCOMPARE(desk.job.count(u"Unità immobiliari") + desk.job.count(u"Vani"), 0);
        QCOMPARE(desk.units().cells().rowCount(), 1);
        QCOMPARE(desk.status(), QString());
        desk.type(desk.units(), 0, 0, u"x"_s);
        desk.type(desk.rooms(), 0, 0, u"x"_s);
        press(u"<Ctrl+D>"_s);
        QCOMPARE(nothing.differencesTo(RegisterState(desk.job)), QStringList());
        desk.goTo(desk.units());
        press(u"<Ins>"_s);
        QCOMPARE(nothing.differencesTo(RegisterState(desk.job)).join(u' '), u"+1 1/+1"_s);
        QCOMPARE(desk.units().cells().rowCount(), 1);
        QCOMPARE(desk.rooms().cells().number(0), u"1"_s);
    }

    void marks()
    {
        Desk desk;
        const auto mark = [](const widgets::Grid& grid, int row, int column) {
            return grid.cells().index(row, column).data(Qt::ToolTipRole).toString();
        };
        QCOMPARE(mark(desk.rooms(), 0, 2), QString());
        desk.job.Execute(u"UPDATE Vani SET Prospetto = '[Boh]', [Consistenza reale] = 'metri' "
                         "WHERE Chiave = '    1    1'"_s);
        desk.job.Execute(u"UPDATE [Unità immobiliari] SET [H piano] = 'terra' WHERE Chiave = "
                         "'    2'"_s);
        desk.reopen();
        QVERIFY(mark(desk.rooms(), 0, 4).contains(u"«[Boh]»"));
        QVERIFY(mark(desk.rooms(), 0, 1).contains(u"vale 0"));
        QVERIFY(mark(desk.units(), 1, 3).contains(u"«terra»"));
        QCOMPARE(mark(desk.units(), 0, 3), QString()); // a ground floor's 0
        desk.type(desk.rooms(), 0, 1, u"12"_s);
        QCOMPARE(mark(desk.rooms(), 0, 1), QString());
    }

    /// The register takes more than the calculation, and says so.
    void beyondTheLimits()
    {
        Desk desk;
        desk.goTo(desk.rooms());
        press(u"<Ctrl+A>"_s + u"<Ctrl+D>"_s.repeated(16));
        QVERIFY(desk.rooms().cells().rowCount() > 50);
        QVERIFY2(desk.status().contains(u"più di 50 vani"), qPrintable(desk.status()));
        desk.find<QAction>(u"Annulla"_s).trigger();
        QVERIFY(!desk.status().contains(u"più di"));
    }

    void tabsAndWidths()
    {
        Desk desk;
        desk.goTo(desk.rooms());
        press(u"<Ctrl+Tab>"_s);
        QCOMPARE(desk.tabs().currentIndex(), 0);
        desk.units().setWidthInTwips(2, 4500);
        desk.screen->close();
        desk.reopen();
        QCOMPARE(desk.units().widthInTwips(2), 4500);
        QCOMPARE(desk.settings.LeggiIni(u"Parametri"_s, u"TabUI2"_s), u"4500"_s);
        for (int tab = 0; tab < 3; ++tab) {
            desk.tabs().setCurrentIndex(tab);
            QCOMPARE(test::namelessControls(*desk.screen), QStringList());
        }
    }
};

ZELTO_TEST(TestParametri)
#include "tst_parametri.moc"
