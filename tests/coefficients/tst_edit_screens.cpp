// SPDX-License-Identifier: GPL-3.0-or-later
#include "coefficients/ui/dati_generali.h"
#include "coefficients/ui/variabili.h"
#include "store/master_database.h"
#include "store/schema.h"
#include "store/settings.h"
#include "store/store_fixture.h"
#include "support/accessible_names.h"
#include "support/dump.h"
#include "support/runner.h"
#include "support/scripted_user.h"
#include "widgets/grid.h"
#include "widgets/typed_line.h"
#include "widgets/typed_text.h"

#include <QApplication>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabBar>
#include <QTabWidget>

using namespace zelto;
using coefficients::DatiGenerali;
using coefficients::Variabili;

namespace {

/// A job, a user, and the screen under test; every test has one of its own.
class Desk
{
public:
    Desk() : job(store::Database::open(folder.newJob())) {}

    void showVariabili() { show(std::make_unique<Variabili>(job, descriptions, user, settings)); }
    void showDatiGenerali() { show(std::make_unique<DatiGenerali>(job, user, settings)); }

    template <typename Widget>
    Widget& find(const QString& name)
    {
        auto* found = screen->findChild<Widget*>(name);
        if (found == nullptr)
            qFatal("%s is missing", qPrintable(name));
        return *found;
    }
    widgets::Grid& grid() { return find<widgets::Grid>(u"Lavori"_s); }
    QPushButton& button(const QString& name) { return find<QPushButton>(name); }

    /// Clicks a button, or presses Esc, or closes the window.
    void finish(const QString& how)
    {
        if (how == u"Esc")
            QTest::keyClick(screen.get(), Qt::Key_Escape);
        else if (how == u"close")
            screen->close();
        else
            QTest::mouseClick(&button(how), Qt::LeftButton);
    }

    /// Types into the cell of the grid, beginning with the grid's own key.
    void type(int row, int column, const QString& text)
    {
        grid().setFocus();
        grid().setCurrentCell(row, column);
        if (text.isEmpty()) {
            QTest::keyClick(&grid(), Qt::Key_Delete);
            return;
        }
        QTest::keyClicks(&grid(), text.left(1));
        QTest::keyClicks(QApplication::focusWidget(), text.mid(1));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    }
    [[nodiscard]] QString dump() { return test::dumpOf(job); }

    test::JobFolder folder;
    store::Database job;
    test::ScriptedUser user{folder.file({})};
    QStringList descriptions = store::groupDescriptions(QStringLiteral(ZELTO_MASTER));
    store::Settings settings{folder.file(u"Zelto.ini"_s)};
    std::unique_ptr<widgets::EditDialog> screen;

private:
    void show(std::unique_ptr<widgets::EditDialog> shown)
    {
        screen = std::move(shown);
        screen->show();
        if (!QTest::qWaitForWindowActive(screen.get()))
            qFatal("the screen does not appear");
    }
};

const QString Question = u"ask: Vuoi salvare i cambiamenti?"_s;

} // namespace

class TestEditScreens : public QObject
{
    Q_OBJECT

private slots:
    /// Every way out of a changed screen, with the answer to its question.
    void leaving_data()
    {
        QTest::addColumn<QString>("how");
        QTest::addColumn<bool>("yes");
        QTest::addColumn<bool>("open");
        QTest::addRow("Applica") << u"BtApplica"_s << true << true;
        QTest::addRow("Applica, No") << u"BtApplica"_s << false << true;
        QTest::addRow("OK") << u"BtOK"_s << true << false;
        QTest::addRow("OK, No") << u"BtOK"_s << false << false;
        QTest::addRow("close box") << u"close"_s << true << false;
        QTest::addRow("Annulla") << u"BtAnnulla"_s << true << false;
        QTest::addRow("Esc") << u"Esc"_s << true << false;
    }
    void leaving()
    {
        QFETCH(QString, how);
        QFETCH(bool, yes);
        const bool asks = how != u"BtAnnulla" && how != u"Esc";
        Desk desk;
        for (const bool variabili : {true, false}) {
            variabili ? desk.showVariabili() : desk.showDatiGenerali();
            const QString before = desk.dump();
            QVERIFY(!desk.button(u"BtApplica"_s).isEnabled());
            if (variabili)
                desk.type(0, 0, u"1.05"_s);
            else
                QTest::keyClicks(&desk.find<widgets::TypedLine>(u"Dati0"_s), u"Via"_s);
            QVERIFY(desk.button(u"BtApplica"_s).isEnabled());
            QCOMPARE(desk.dump(), before);
            desk.user.saysYes = yes;
            desk.finish(how);
            QCOMPARE(desk.user.said(), asks ? Question : QString());
            QTEST(desk.screen->isVisible(), "open");
            QCOMPARE(desk.dump() != before, asks && yes);
            if (desk.screen->isVisible())
                QCOMPARE(desk.button(u"BtApplica"_s).isEnabled(), !yes);
            desk.screen->reject();
        }
    }

    /// An unchanged screen asks nothing, and remembers the widths of columns.
    void unchanged()
    {
        Desk desk;
        desk.job.Execute(u"DELETE FROM Variabili"_s);
        desk.showVariabili();
        QVERIFY(desk.dump().contains(u"Variabili: [ ] [ ] [ ] [ ] [ ] [ ] [ ]"));
        QTest::mouseDClick(desk.grid().viewport(), Qt::LeftButton, {}, {40, 5});
        QVERIFY(desk.grid().isEditing());
        desk.grid().setWidthInTwips(3, 3000);
        desk.finish(u"BtOK"_s);
        QVERIFY(!desk.screen->isVisible());
        QCOMPARE(desk.user.said(), QString());
        QCOMPARE(desk.settings.LeggiIni(u"Variabili"_s, u"Colonna3"_s), u"3000"_s);
        desk.showVariabili();
        QCOMPARE(desk.grid().widthInTwips(3), 3000);
        desk.showDatiGenerali();
        desk.finish(u"Esc"_s);
        QVERIFY(desk.settings.LeggiIni(u"DatiGenerali"_s, u"colonna0"_s).toInt() > 0);
    }

    /// What was shown comes back as the grid writes it, the rest exactly as it was.
    void groupsAreWrittenBack()
    {
        Desk desk;
        desk.job.Execute(u"UPDATE Variabili SET Var0 = 'x', Var2 = '1' || char(9) || 'A' || "
                         "char(9) || 'Alto' || char(9) || 'resto', Var3 = NULL, Var4 = 'y'"_s);
        desk.showVariabili();
        QCOMPARE(desk.find<QPlainTextEdit>(u"Text1"_s).toPlainText(), desk.descriptions.at(1));
        QTest::keyClick(&desk.grid(), Qt::Key_Tab, Qt::ControlModifier);
        QCOMPARE(desk.find<QTabBar>(u"TabStrip1"_s).currentIndex(), 1);
        QCOMPARE(desk.grid().cells().text(0, 2), u"Alto"_s);
        desk.type(0, 1, u"B"_s);
        desk.find<QTabBar>(u"TabStrip1"_s).setCurrentIndex(5);
        desk.find<QTabBar>(u"TabStrip1"_s).setCurrentIndex(1);
        QCOMPARE(desk.grid().cells().text(0, 1), u"B"_s);
        desk.finish(u"BtOK"_s);
        QVERIFY(desk.dump().contains(
            u"Variabili: [x] [\t\t\r\n] [1\tB\tAlto\r\n] - [y] [ ] [\t\t\r\n]"));
    }

    void rowsThatNobodyReads()
    {
        Desk desk;
        desk.job.Execute(u"UPDATE Variabili SET Var1 = '%1'"_s.arg(u"1\r\n"_s.repeated(200)));
        desk.showVariabili();
        QCOMPARE(desk.find<QLabel>(u"Stato"_s).text(), QString());
        desk.grid().setCurrentCell(199, 2);
        QTest::keyClick(&desk.grid(), Qt::Key_Return);
        QVERIFY(desk.find<QLabel>(u"Stato"_s).text().contains(u"prime 200 righe"));
    }

    /// Rows are inserted and deleted where the user is, and the list that they cut off is told.
    void rows()
    {
        Desk desk;
        desk.job.Execute(u"UPDATE Variabili SET Var1 = '1' || char(9) || 'A' || char(13,10) || '2' "
                         "|| char(9) || 'B' || char(13,10) || '3' || char(9) || 'C'"_s);
        desk.showVariabili();
        desk.grid().setCurrentCell(1, 1);
        QTest::keyClick(&desk.grid(), Qt::Key_Insert);
        QCOMPARE(desk.grid().cells().tableText(), u"1\tA\t\r\n\t\t\r\n2\tB\t\r\n3\tC\t\r\n"_s);
        QCOMPARE(desk.grid().cells().number(3), u"4"_s);
        QVERIFY(desk.find<QLabel>(u"Stato"_s).text().contains(u"La riga 2 è senza valore"));
        QTest::keyClick(&desk.grid(), Qt::Key_Down, Qt::ShiftModifier);
        QTest::keyClick(&desk.grid(), Qt::Key_Delete, Qt::ControlModifier);
        QCOMPARE(desk.grid().cells().tableText(), u"1\tA\t\r\n3\tC\t\r\n"_s);
        QCOMPARE(desk.find<QLabel>(u"Stato"_s).text(), QString());
        for (int row = 0; row < 3; ++row)
            desk.button(u"EliminaRiga"_s).click();
        QCOMPARE(desk.grid().cells().tableText(), u"\t\t\r\n"_s);
    }

    /// Codes that are renamed, and what becomes of the rooms that refer to them.
    void renamedCodes_data()
    {
        QTest::addColumn<QString>("edits"); // "row.column=text", "+row" inserts, "-row" deletes
        QTest::addColumn<QString>("asked");
        QTest::addColumn<QString>("rooms");
        const auto row = [](const char* name, const QString& edits, const QString& asked,
                            const QString& rooms) {
            QTest::newRow(name) << edits << asked << rooms;
        };
        const QString as = u"[A] [A] [B] [Q] [D]"_s;
        row("another code", u"1.2=X"_s, u"2 vani usano [A]"_s, u"[X] [X] [B] [Q] [D]"_s);
        row("one room", u"2.2=X"_s, u"1 vano usa [B]"_s, u"[A] [A] [X] [Q] [D]"_s);
        row("along a chain", u"1.2=B 2.2=C"_s, u"2 vani usano [A], 1 vano usa [B]"_s,
            u"[B] [B] [C] [Q] [D]"_s);
        row("moved down", u"+1 2.2=X"_s, u"2 vani usano [A]"_s, u"[X] [X] [B] [Q] [D]"_s);
        row("moved up", u"-1 1.2=X"_s, u"1 vano usa [B]"_s, u"[A] [A] [X] [Q] [D]"_s);
        row("behind the end", u"4.2=X"_s, u"1 vano usa [D]"_s, u"[A] [A] [B] [Q] [X]"_s);
        row("change of places", u"1.1=2 1.2=B 2.1=1 2.2=A"_s, {}, as);
        row("emptied", u"1.2="_s, {}, as);
        row("another value", u"1.1=9"_s, {}, as);
    }
    void renamedCodes()
    {
        QFETCH(QString, edits);
        QFETCH(QString, asked);
        QFETCH(QString, rooms);
        for (const bool yes : {true, false}) {
            Desk desk;
            const QString list = u"1\tA\r\n2\tB\r\n\t\r\n4\tD\r\n"_s;
            desk.job.Execute(u"UPDATE Variabili SET Var1 = '%1'"_s.arg(list));
            const QStringList stored{u"[A]"_s, u"[A]"_s, u"[B]"_s, u"[Q]"_s, u"[D]"_s};
            desk.job.Execute(u"DELETE FROM Vani"_s);
            for (int room = 1; room <= stored.size(); ++room)
                desk.job.Execute(
                    u"INSERT INTO Vani (Chiave, [Riferimento unità], Posizione, "
                    "Destinazione, Orientamento) VALUES ('%1', 1, %2, '%3', '[A]')"_s.arg(
                        store::roomKey(1, room), QString::number(room), stored[room - 1]));
            desk.showVariabili();
            for (const QString& edit : edits.split(u' ')) {
                const int row = QStringView(edit).mid(edit[0].isDigit() ? 0 : 1, 1).toInt() - 1;
                desk.grid().setCurrentCell(row, 0);
                if (edit.startsWith(u'+'))
                    desk.button(u"InserisciRiga"_s).click();
                else if (edit.startsWith(u'-'))
                    desk.button(u"EliminaRiga"_s).click();
                else
                    desk.type(row, QStringView(edit).mid(2, 1).toInt() - 1, edit.mid(4));
            }
            if (!yes)
                desk.user.keeps = u"rinominare"_s;
            desk.finish(u"BtApplica"_s);
            QStringList questions{Question};
            for (const QString& question : asked.split(u", "_s, Qt::SkipEmptyParts))
                questions << u"ask: %1: rinominare?"_s.arg(question);
            QCOMPARE(desk.user.said(), questions.join(u'\n'));
            QStringList found;
            for (auto room = desk.job.records(store::TabellaVani); !room.atEnd(); room.next()) {
                found << room.text(5);
                QCOMPARE(room.text(6), u"[A]"_s);
            }
            QCOMPARE(found.join(u' '), yes ? rooms : stored.join(u' '));
        }
    }

    void codesOfStaircases()
    {
        Desk desk;
        desk.showDatiGenerali();
        desk.find<QTabWidget>(u"TabStrip1"_s).setCurrentIndex(2);
        QCOMPARE(desk.grid().cells().rowCount(), 99);
        desk.type(2, 0, u"AB"_s);
        const QModelIndex cell = desk.grid().cells().index(2, 0);
        QVERIFY(cell.data(Qt::ToolTipRole).toString().contains(u"«AB»"));
        QVERIFY(desk.find<QLabel>(u"Stato"_s).text().contains(u"Riga 3"));
        desk.type(2, 0, u"C"_s);
        QCOMPARE(desk.find<QLabel>(u"Stato"_s).text(), QString());
        desk.type(2, 2, u"1,5x"_s); // what the column does not take stays out
        QCOMPARE(desk.grid().cells().text(2, 2), u"1.5"_s);
        desk.finish(u"BtApplica"_s);
        const QString codes = desk.job.records(u"Dati Generali").text(16);
        QCOMPARE(codes.count(u"\r\n"_s), 99);
        QVERIFY(codes.startsWith(u"\t\t\r\n\t\t\r\nC\t\t1.5\r\n"));
    }

    /// A date that is none keeps the screen open, is named, and loses nothing. A missing record is
    /// added, and what is empty stays Null.
    void dates()
    {
        Desk desk;
        desk.job.Execute(u"DELETE FROM [Dati Generali]"_s);
        desk.showDatiGenerali();
        auto& date = desk.find<widgets::TypedLine>(u"Dati3"_s);
        date.setFocus();
        QTest::keyClicks(&date, u"31022013"_s);
        desk.finish(u"BtOK"_s);
        QVERIFY(desk.screen->isVisible());
        QVERIFY(desk.find<QLabel>(u"Stato"_s).text().contains(u"31022013"));
        QTRY_VERIFY(date.hasFocus());
        date.selectAll();
        QTest::keyClicks(&date, u"28022013"_s);
        QTest::keyClick(&date, Qt::Key_Return);
        QCOMPARE(date.text(), u"28/02/2013"_s);
        QCOMPARE(desk.find<QLabel>(u"Stato"_s).text(), QString());
        desk.finish(u"BtOK"_s);
        QVERIFY(desk.dump().contains(
            u"Dati Generali: [1] - - - [2013-02-28] - - - - - - - - - - - [\t\t\r\n"));
        desk.showDatiGenerali();
        auto& shown = desk.find<widgets::TypedLine>(u"Dati3"_s);
        QCOMPARE(shown.text(), u"28/02/2013"_s);
        shown.clear();
        QTest::keyClicks(&desk.find<widgets::TypedLine>(u"Dati14"_s), u"Ascensore"_s);
        desk.finish(u"BtOK"_s);
        QVERIFY(
            desk.dump().contains(u"Dati Generali: [1] - - - - - - - - - - - - - - [Ascensore] ["));
    }

    /// A job that another program changed or holds: reported, and the screen keeps what was typed.
    void failureToStore()
    {
        Desk desk;
        desk.showVariabili();
        desk.type(0, 0, u"1.05"_s);
        desk.job.Execute(u"UPDATE Variabili SET Var1 = 'altro'"_s);
        desk.finish(u"BtOK"_s);
        QCOMPARE(desk.user.said(), Question + u"\nreport: 3197"_s);
        QVERIFY(desk.screen->isVisible() && desk.button(u"BtApplica"_s).isEnabled());
        QCOMPARE(desk.grid().cells().text(0, 0), u"1.05"_s);
        desk.screen->reject();

        desk.showDatiGenerali();
        QTest::keyClicks(&desk.find<widgets::TypedText>(u"Dati2"_s), u"Note"_s);
        desk.job.Execute(u"PRAGMA query_only = 1"_s);
        desk.finish(u"BtApplica"_s);
        QVERIFY(desk.user.said().startsWith(Question + u"\nreport: "_s));
        QVERIFY(desk.button(u"BtApplica"_s).isEnabled());
        QCOMPARE(desk.find<widgets::TypedText>(u"Dati2"_s).storedText(), u"Note"_s);
        desk.job.Execute(u"PRAGMA query_only = 0"_s);
        desk.finish(u"BtApplica"_s);
        QCOMPARE(desk.job.records(u"Dati Generali").text(3), u"Note"_s);
    }

    /// Every control has a name, and the Tab key goes through the first page from top to bottom,
    /// then to the buttons.
    void controls()
    {
        Desk desk;
        desk.showVariabili();
        QCOMPARE(test::namelessControls(*desk.screen), QStringList());
        desk.showDatiGenerali();
        QStringList order;
        for (int i = 0; i < 7; ++i) {
            order << QApplication::focusWidget()->objectName();
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        }
        QCOMPARE(order.join(u' '), u"Dati0 Dati1 Dati2 Dati3 Dati4 BtAnnulla BtOK"_s);
        auto& tabs = desk.find<QTabWidget>(u"TabStrip1"_s);
        for (int tab = 0; tab < tabs.count(); ++tab) {
            tabs.setCurrentIndex(tab);
            QCOMPARE(test::namelessControls(*desk.screen), QStringList());
        }
    }
};

ZELTO_TEST(TestEditScreens)
#include "tst_edit_screens.moc"
