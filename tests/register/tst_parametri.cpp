// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/figures.h"
#include "parametri_desk.h"
#include "support/accessible_names.h"
#include "support/runner.h"
#include "widgets/typed_line.h"

#include <QAction>
#include <QCheckBox>
#include <QClipboard>
#include <QTimer>

using namespace zelto;
using namespace zelto::registro;

namespace {

using test::Desk;
using Action = std::function<void(Desk&)>;

} // namespace

Q_DECLARE_METATYPE(Action)

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
        desk.tree().select(7);
        emit desk.tree().unitSelected(desk.tree().selectedUnit());
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

    /// What a user can do, each stored at once, and taken back and made again exactly.
    void changes_data()
    {
        QTest::addColumn<Action>("act");
        QTest::addColumn<QString>("stored");
        const auto row = [](const char* name, const QString& stored, const Action& act) {
            QTest::addRow("%s", name) << act << stored;
        };
        row("name of a unit", u"[    2] [2] [Bar] "_s,
            [](Desk& desk) { desk.type(desk.units(), 1, 0, u"Bar"_s); });
        row("staircase by its list", u"[Negozio 2 - Libreria] [Piano terra] [B]"_s,
            [](Desk& desk) { desk.type(desk.units(), 1, 2, u"B"_s); });
        row("no staircase", u"[Negozio 2 - Libreria] [Piano terra] - "_s, [](Desk& desk) {
            desk.units().setCurrentCell(1, 2);
            Desk::press(Qt::Key_F2);
            Desk::press(Qt::Key_Home);
            Desk::press(Qt::Key_Return);
        });
        row("flag of a table", u"[A] [0] [XX        ]"_s, [](Desk& desk) {
            desk.units().setCurrentCell(0, 4);
            Desk::press(Qt::Key_Space);
        });
        row("field", u"[    1] [1] [Negozio 1 - Panificio] [Ammezzato]"_s, [](Desk& desk) {
            desk.show(1);
            auto& field = desk.find<widgets::TypedLine>(u"Dati1"_s);
            field.setFocus();
            field.selectAll();
            QTest::keyClicks(&field, u"Ammezzato"_s);
            Desk::press(Qt::Key_Return);
        });
        row("staircase of the field", u"[Negozio 1 - Panificio] [Piano terra] [B]"_s,
            [](Desk& desk) {
                desk.show(1);
                QTest::mouseDClick(&desk.find<QWidget>(u"Dati2"_s), Qt::LeftButton);
                QTest::keyClicks(QApplication::focusWidget(), u"B"_s);
                Desk::press(Qt::Key_Return);
            });
        row("check box", u"[A] [0] [XX        ]"_s, [](Desk& desk) {
            desk.show(1);
            desk.find<QCheckBox>(u"Check1_0"_s).click();
        });
        row("new unit, named", u"[   33] [33] [Nuova] - - - -"_s, [](Desk& desk) {
            desk.units().setFocus();
            Desk::press(Qt::Key_Insert);
            QTest::keyClicks(QApplication::focusWidget(), u"N"_s);
            QTest::keyClicks(QApplication::focusWidget(), u"uova"_s);
            Desk::press(Qt::Key_Return);
        });
        row("copies of units", u"[   34] [34] [Negozio 2 - Libreria]"_s, [](Desk& desk) {
            desk.selectRows(desk.units(), 0, 1);
            Desk::press(Qt::Key_D, Qt::ControlModifier);
        });
        row("units deleted", QString(), [](Desk& desk) {
            desk.selectRows(desk.units(), 2, 6);
            Desk::press(Qt::Key_Delete, Qt::ControlModifier);
        });
        row("size of a room", u"[    1    2] [1] [2] [Retro] [16.25]"_s,
            [](Desk& desk) { desk.type(desk.rooms(), 1, 1, u"16.25"_s); });
        row("coefficient by its list",
            u"[Retro] [15.20] [Retro] [E]"_s.replace(u"[Retro] [E]"_s, u"[[Retro]] [[E]]"_s),
            [](Desk& desk) {
                desk.show(2);
                desk.rooms().setFocus();
                desk.rooms().setCurrentCell(1, 3);
                Desk::press(Qt::Key_F2);
                Desk::press(Qt::Key_Home);
                for (int i = 0; i < 3; ++i)
                    Desk::press(Qt::Key_Down);
                Desk::press(Qt::Key_Return);
            });
        row("new room", u"[    1    4] [1] [4] - - - - - - - -"_s, [](Desk& desk) {
            desk.selectRows(desk.rooms(), 0, 0);
            Desk::press(Qt::Key_Insert);
        });
        row("rooms deleted", QString(), [](Desk& desk) {
            desk.selectRows(desk.rooms(), 0, 2);
            Desk::press(Qt::Key_Delete, Qt::ControlModifier);
        });
        row("copies of rooms", u"[    1    5] [1] [5] [Retro]"_s, [](Desk& desk) {
            desk.selectRows(desk.rooms(), 0, 1);
            Desk::press(Qt::Key_D, Qt::ControlModifier);
        });
        row("pasted block", u"[    1    3] [1] [3] [Due] [2.5]"_s, [](Desk& desk) {
            QApplication::clipboard()->setText(u"Uno\t1,5\nDue\t2,5\n"_s);
            desk.selectRows(desk.rooms(), 1, 1);
            Desk::press(Qt::Key_V, Qt::ControlModifier);
        });
    }
    void changes()
    {
        QFETCH(Action, act);
        QFETCH(QString, stored);
        Desk desk;
        const QString before = desk.dump();
        const QString viewBefore = desk.views();
        act(desk);
        const QString after = desk.dump();
        QVERIFY(after != before);
        QVERIFY2(after.contains(stored), qPrintable(after));
        const int unit = desk.units().cells().number(desk.units().currentRow()).toInt();

        // Another screen shows the same as the one that was patched, but for empty names.
        const QString patched = desk.views();
        while (desk.find<QAction>(u"Annulla"_s).isEnabled())
            desk.find<QAction>(u"Annulla"_s).trigger();
        QCOMPARE(desk.dump(), before);
        desk.units().setCurrentCell(0, 0);
        QCOMPARE(desk.views(), viewBefore);
        while (desk.find<QAction>(u"Ripeti"_s).isEnabled())
            desk.find<QAction>(u"Ripeti"_s).trigger();
        QCOMPARE(desk.dump(), after);
        desk.open();
        for (int row = 0; row < desk.units().cells().rowCount(); ++row)
            if (desk.units().cells().number(row).toInt() == unit)
                desk.units().setCurrentCell(row, 0);
        static const QRegularExpression emptyNames(u"(UI|V):\\d+\n"_s);
        QCOMPARE(desk.views().replace(emptyNames, u"-\n"_s), patched);
        QCOMPARE(desk.user.said(), QString());
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
        other.allowSchemaChanges();
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
        QCOMPARE(readRooms(desk.job, 7).front().texts.front(), u"Sala"_s);
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
        QCOMPARE(chosenCoefficient(u"[A] 1.05"_s, u"x"_s), u"[A]"_s);
        QCOMPARE(chosenCoefficient(u" 1.05 "_s, u"x"_s), u"1.05"_s);
        QCOMPARE(chosenCoefficient(u"[A 1.05"_s, u"x"_s), u"x"_s);
    }
};

ZELTO_TEST(TestParametri)
#include "tst_parametri.moc"
