// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/figures.h"
#include "parametri_desk.h"
#include "support/accessible_names.h"
#include "support/runner.h"
#include "widgets/typed_line.h"

#include <QAction>
#include <QClipboard>
#include <QTimer>

using namespace zelto;
using namespace zelto::registro;

namespace {

using test::Desk;

} // namespace

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
        const calc::ModelloLavoro modello = calc::CaricaLavoro(desk.job);
        const calc::Consistenze sizes = calc::calcolaConsistenze(modello);
        QCOMPARE(desk.status(),
                 u"Consistenza %1 - Millesimi %2"_s.arg(
                     calc::MascheraTotaleUnita.format(sizes.CTUI[6]).trimmed(),
                     calc::MascheraMillesimi.format(calc::calcolaMillGen(sizes)[6].toDouble())
                         .trimmed()));
        QCOMPARE(desk.dump(), stored);
    }

    void menus()
    {
        Desk desk;
        QStringList captions;
        QTimer closer;
        closer.setSingleShot(true);
        connect(&closer, &QTimer::timeout, &desk.menu, &QMenu::close);
        connect(&desk.menu, &QMenu::aboutToShow, this, [&] {
            captions.clear();
            for (int entry = 0; entry < 3; ++entry)
                captions << desk.menu.DxMouse(entry).text();
            closer.start();
        });
        desk.selectRows(desk.rooms(), 1, 1);
        Desk::press(Qt::Key_F10, Qt::ShiftModifier);
        QCOMPARE(captions.join(u'/'), u"Aggiungi vano/Elimina vano Retro/Duplica vano Retro"_s);
        desk.selectRows(desk.rooms(), 0, 2);
        emit desk.rooms().customContextMenuRequested({});
        QCOMPARE(captions.at(1), u"Elimina vani da Vendita a Bagno"_s);
        desk.selectRows(desk.units(), 0, 1);
        emit desk.units().customContextMenuRequested({});
        QCOMPARE(captions.at(0), u"Aggiungi singola U.I."_s);
        QCOMPARE(captions.at(2), u"Duplica U.I. da Negozio 1 - Panificio a Negozio 2 - Libreria"_s);
    }

    void filters()
    {
        Desk desk;
        auto& level = desk.find<QComboBox>(u"Livello"_s);
        level.setCurrentText(u"Piano primo"_s);
        QCOMPARE(desk.units().cells().rowCount(), 4);
        // The first unit stays the current one, though it is not listed.
        QCOMPARE(desk.tree().selectedUnit(), 1);
        QCOMPARE(desk.units().currentRow(), -1);
        desk.find<QComboBox>(u"CodScala"_s).setCurrentText(u"B"_s);
        QCOMPARE(desk.units().cells().rowCount(), 2);
        level.setCurrentText(u"Piano attico"_s);
        QCOMPARE(desk.units().cells().rowCount(), 1);
        level.setCurrentIndex(0);
        desk.find<QComboBox>(u"CodScala"_s).setCurrentIndex(0);
        QCOMPARE(desk.units().cells().rowCount(), 32);
    }

    /// What the job refuses is reported, and the cell shows what is stored.
    void refusals()
    {
        Desk desk;
        const QString before = desk.dump();
        const QString viewBefore = desk.views();
        desk.job.Execute(u"PRAGMA query_only = 1"_s);
        desk.type(desk.rooms(), 0, 0, u"Altro"_s);
        QVERIFY(desk.user.said().startsWith(u"report: "));
        QCOMPARE(desk.views(), viewBefore);
        desk.selectRows(desk.units(), 0, 0);
        Desk::press(Qt::Key_Delete, Qt::ControlModifier);
        QVERIFY(desk.user.said().startsWith(u"report: "));
        desk.job.Execute(u"PRAGMA query_only = 0"_s);
        QCOMPARE(desk.dump(), before);
        QCOMPARE(desk.views(), viewBefore);
        // Only a capital X is a flag.
        QApplication::clipboard()->setText(u"x"_s);
        desk.units().setCurrentCell(0, 4);
        Desk::press(Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(desk.views(), viewBefore);
        // A table without a name has no flags.
        desk.units().setCurrentCell(0, 12);
        Desk::press(Qt::Key_Space);
        QCOMPARE(desk.dump(), before);
    }

    /// A job that cannot be read for a while: the screen says so and goes on afterwards.
    void unreadable()
    {
        Desk desk;
        test::RawFile other(desk.folder.file(u"A.ZLT"_s));
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

    /// The screen says where the user is, whatever the filters list.
    void names()
    {
        Desk desk;
        desk.clickNode(u"A/1 - Bellandi"_s);
        desk.show(2);
        const QLabel& title = desk.find<QLabel>(u"TitoloVani"_s);
        QCOMPARE(title.text(), u"Vani di A/1 - Bellandi, Piano primo"_s);
        desk.type(desk.rooms(), 0, 1, u"9"_s);
        const QAction& undo = desk.find<QAction>(u"Annulla"_s);
        QCOMPARE(undo.toolTip(), u"Annulla: consistenza di A/1 - Bellandi"_s);
        desk.filter(u"CodScala"_s, u"B"_s);
        QCOMPARE(desk.units().currentRow(), -1);
        QCOMPARE(desk.tree().selectedUnit(), 6);
        // A staircase that the tree does not have takes the unit out of it.
        desk.job.Execute(u"UPDATE [Unità immobiliari] SET [Codice scala] = 'Z' WHERE Chiave = "
                         "'    5'"_s);
        desk.screen->refreshLists();
        desk.filter(u"CodScala"_s, u" "_s);
        desk.show(0);
        desk.click(desk.units(), 4, 0);
        QCOMPARE(desk.tree().currentItem(), nullptr);
        QVERIFY(desk.tree().selectedItems().isEmpty());
        QCOMPARE(title.text(), u"Vani di Studio Zanfretta, Piano terra"_s);
    }

    /// What another program deleted is neither written to nor shown as stored.
    void deletedMeanwhile()
    {
        Desk desk;
        desk.show(2);
        desk.job.Execute(u"DELETE FROM Vani WHERE Chiave = '    1    2'"_s);
        const test::RegisterState before(desk.job);
        desk.type(desk.rooms(), 1, 0, u"Fantasma"_s);
        QVERIFY(desk.user.said().startsWith(u"message: Un altro programma"));
        QVERIFY(!desk.views().contains(u"Fantasma"));
        QCOMPARE(desk.rooms().cells().rowCount(), 2);
        // Nor is anything written over what it changed, in this record or by another file.
        {
            test::RawFile other(desk.folder.file(u"A.ZLT"_s));
            other.run("UPDATE Vani SET Ambiente = 'Altro' WHERE Chiave = '    1    1'");
        }
        desk.type(desk.rooms(), 0, 0, u"Mio"_s);
        QVERIFY(desk.user.said().startsWith(u"message: Un altro programma"));
        QVERIFY(desk.views().contains(u"Altro") && !desk.dump().contains(u"Mio"));
        desk.type(desk.rooms(), 0, 0, u"Mio"_s);
        QVERIFY(desk.dump().contains(u"Mio"));
        desk.job.Execute(u"DELETE FROM [Unità immobiliari] WHERE [Riferimento unità] = 1"_s);
        desk.rooms().setFocus();
        Desk::keys(u"<Ins>"_s);
        QCOMPARE(desk.user.said(), u"report: 3167"_s);
        QVERIFY(desk.find<QLabel>(u"TitoloVani"_s).text().contains(u"Libreria"));
        // Rooms without their unit keep their numbers.
        desk.job.Execute(u"UPDATE Vani SET [Riferimento unità] = 40, Chiave = '   40    1' WHERE "
                         "Chiave = '    1    1'"_s);
        desk.show(0);
        desk.units().setFocus();
        Desk::keys(u"<Ins>Nuova<Return>"_s);
        QCOMPARE(desk.user.said(), QString());
        QVERIFY(before.differencesTo(test::RegisterState(desk.job)).contains(u"+41"_s));
    }

    void withoutUnits()
    {
        Desk desk;
        desk.selectRows(desk.units(), 0, 31);
        Desk::press(Qt::Key_Delete, Qt::ControlModifier);
        QCOMPARE(test::registerText(desk.job), QString());
        QCOMPARE(desk.units().cells().rowCount(), 1);
        QCOMPARE(desk.status(), QString());
        desk.type(desk.units(), 0, 0, u"x"_s);
        desk.type(desk.rooms(), 0, 0, u"x"_s);
        Desk::press(Qt::Key_D, Qt::ControlModifier);
        QCOMPARE(test::registerText(desk.job), QString());
        desk.selectRows(desk.units(), 0, 0);
        Desk::press(Qt::Key_Insert);
        QCOMPARE(test::registerText(desk.job), u"1: 1"_s);
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
        desk.open();
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
        desk.selectRows(desk.rooms(), 0, 2);
        for (int i = 0; i < 16; ++i)
            Desk::press(Qt::Key_D, Qt::ControlModifier);
        desk.selectRows(desk.rooms(), 0, 0);
        QVERIFY(desk.rooms().cells().rowCount() > 50);
        QVERIFY2(desk.status().contains(u"più di 50 vani"), qPrintable(desk.status()));
        desk.find<QAction>(u"Annulla"_s).trigger();
        QVERIFY(!desk.status().contains(u"più di"));
    }

    void tabsAndWidths()
    {
        Desk desk;
        desk.show(2);
        desk.rooms().setFocus();
        Desk::press(Qt::Key_Tab, Qt::ControlModifier);
        QCOMPARE(desk.find<QTabWidget>(u"tbsOptions"_s).currentIndex(), 0);
        desk.units().setWidthInTwips(2, 4500);
        desk.screen->close();
        desk.open();
        QCOMPARE(desk.units().widthInTwips(2), 4500);
        QCOMPARE(desk.settings.LeggiIni(u"Parametri"_s, u"TabUI2"_s), u"4500"_s);
        for (int tab = 0; tab < 3; ++tab) {
            desk.show(tab);
            QCOMPARE(test::namelessControls(*desk.screen), QStringList());
        }
    }

    void coefficientEntries()
    {
        QCOMPARE(chosenCoefficient({u"A"_s, u"1.05"_s, {}}, u"x"_s), u"[A]"_s);
        QCOMPARE(chosenCoefficient({{}, u" 1.05 "_s, {}}, u"x"_s), u"1.05"_s);
        QCOMPARE(chosenCoefficient({{}, u"[A 1.05"_s, {}}, u"x"_s), u"x"_s);
        QCOMPARE(chosenCoefficient({}, u"x"_s), QString());
    }
};

ZELTO_TEST(TestParametri)
#include "tst_parametri.moc"
