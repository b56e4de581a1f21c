// SPDX-License-Identifier: GPL-3.0-or-later
#include "coefficients/ui/dati_generali.h"
#include "coefficients/ui/variabili.h"
#include "store/master_database.h"
#include "store/schema.h"
#include "support/accessible_names.h"
#include "support/columns.h"
#include "support/runner.h"
#include "support/screen_desk.h"
#include "widgets/typed_line.h"
#include "widgets/typed_text.h"

#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabBar>
#include <QTabWidget>

using namespace zelto;
using coefficients::DatiGenerali;
using coefficients::Variabili;
using test::columns;
using test::press;
using widgets::TypedLine;

namespace {

/// Both screens over a new job.
class Desk : public test::ScreenDesk
{
public:
    void openVariabili() { open(std::make_unique<Variabili>(job, descriptions, user, settings)); }
    void openDatiGenerali() { open(std::make_unique<DatiGenerali>(job, user, settings)); }

    widgets::Grid& grid() { return find<widgets::Grid>(u"Lavori"_s); }
    QString cell(int row, int column) { return grid().cells().text(row, column); }
    QString remark() { return find<QLabel>(u"Stato"_s).text(); }
    bool isChanged() { return find<QPushButton>(u"BtApplica"_s).isEnabled(); }
    bool isOpen() { return screen->isVisible(); }

    /// Clicks a button, or presses Esc, or closes the window.
    void finish(const QString& how)
    {
        if (how == u"Esc")
            press(u"<Esc>"_s, screen.get());
        else if (how == u"close")
            screen->close();
        else
            QTest::mouseClick(&find<QPushButton>(how), Qt::LeftButton);
    }
    void type(int row, int column, const QString& text)
    {
        ScreenDesk::type(grid(), row, column, text.isEmpty() ? u"<Del>"_s : text);
    }

    QStringList descriptions = store::groupDescriptions(QStringLiteral(ZELTO_MASTER));
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
        for (const QString& how : {u"BtApplica"_s, u"BtOK"_s, u"close"_s, u"BtAnnulla"_s, u"Esc"_s})
            for (const bool yes : {true, false})
                QTest::addRow("%s, %d", qPrintable(how), yes) << how << yes;
    }
    void leaving()
    {
        QFETCH(QString, how);
        QFETCH(bool, yes);
        const bool asks = how != u"BtAnnulla" && how != u"Esc";
        for (const bool variabili : {true, false}) {
            Desk desk;
            variabili ? desk.openVariabili() : desk.openDatiGenerali();
            const QString before = desk.dump();
            QVERIFY(!desk.isChanged());
            if (variabili)
                desk.type(0, 0, u"1.05"_s);
            else
                press(u"Via"_s, &desk.find<TypedLine>(u"Dati0"_s));
            QVERIFY(desk.isChanged());
            QCOMPARE(desk.dump(), before);
            desk.user.saysYes = yes;
            desk.finish(how);
            QCOMPARE(desk.user.said(), asks ? Question : QString());
            QCOMPARE(desk.isOpen(), how == u"BtApplica");
            QCOMPARE(desk.dump() != before, asks && yes);
            if (desk.isOpen())
                QCOMPARE(desk.isChanged(), !yes);
        }
    }

    /// An unchanged screen asks nothing, and remembers the widths of columns.
    void unchanged()
    {
        Desk desk;
        desk.job.Execute(u"DELETE FROM Variabili"_s);
        desk.openVariabili();
        QVERIFY(desk.dump().contains(u"Variabili: [ ] [ ] [ ] [ ] [ ] [ ] [ ]"));
        QTest::mouseDClick(desk.grid().viewport(), Qt::LeftButton, {}, {40, 5});
        QVERIFY(desk.grid().isEditing());
        desk.grid().setWidthInTwips(3, 3000);
        desk.finish(u"BtOK"_s);
        QVERIFY(!desk.isOpen());
        QCOMPARE(desk.user.said(), QString());
        QCOMPARE(desk.settings.LeggiIni(u"Variabili"_s, u"Colonna3"_s), u"3000"_s);
        desk.openVariabili();
        QCOMPARE(desk.grid().widthInTwips(3), 3000);
        desk.openDatiGenerali();
        desk.finish(u"Esc"_s);
        QVERIFY(desk.settings.LeggiIni(u"DatiGenerali"_s, u"colonna0"_s).toInt() > 0);
    }

    /// What was shown comes back as the grid writes it, the rest exactly as it was.
    void groupsAreWrittenBack()
    {
        Desk desk;
        desk.job.Execute(u"UPDATE Variabili SET Var0 = 'x', Var2 = '1' || char(9) || 'A' || "
                         "char(9) || 'Alto' || char(9) || 'resto', Var3 = NULL, Var4 = 'y'"_s);
        desk.openVariabili();
        QCOMPARE(desk.find<QPlainTextEdit>(u"Text1"_s).toPlainText(), desk.descriptions.at(1));
        press(u"<Ctrl+Tab>"_s, &desk.grid());
        auto& tabs = desk.find<QTabBar>(u"TabStrip1"_s);
        QCOMPARE(tabs.currentIndex(), 1);
        QCOMPARE(desk.cell(0, 2), u"Alto"_s);
        desk.type(0, 1, u"B"_s);
        tabs.setCurrentIndex(5);
        tabs.setCurrentIndex(1);
        QCOMPARE(desk.cell(0, 1), u"B"_s);
        desk.finish(u"BtOK"_s);
        QVERIFY(desk.dump().contains(
            u"Variabili: [x] [\t\t\r\n] [1\tB\tAlto\r\n] - [y] [ ] [\t\t\r\n]"));
    }

    void rowsThatNobodyReads()
    {
        Desk desk;
        desk.job.Execute(u"UPDATE Variabili SET Var1 = '%1'"_s.arg(u"1\r\n"_s.repeated(200)));
        desk.openVariabili();
        QCOMPARE(desk.remark(), QString());
        desk.grid().setCurrentCell(199, 2);
        press(u"<Return>"_s, &desk.grid());
        QVERIFY(desk.remark().contains(u"prime 200 righe"));
    }

    /// Rows are inserted and deleted where the user is, and the list that they cut off is told.
    void rows()
    {
        Desk desk;
        desk.job.Execute(u"UPDATE Variabili SET Var1 = '1\tA\r\n2\tB\r\n3\tC'"_s);
        desk.openVariabili();
        desk.grid().setCurrentCell(1, 1);
        press(u"<Ins>"_s, &desk.grid());
        QCOMPARE(desk.grid().cells().tableText(), u"1\tA\t\r\n\t\t\r\n2\tB\t\r\n3\tC\t\r\n"_s);
        QCOMPARE(desk.grid().cells().number(3), u"4"_s);
        QVERIFY(desk.remark().contains(u"La riga 2 è senza valore"));
        press(u"<Shift+Down><Ctrl+Del>"_s, &desk.grid());
        QCOMPARE(desk.grid().cells().tableText(), u"1\tA\t\r\n3\tC\t\r\n"_s);
        QCOMPARE(desk.remark(), QString());
        for (int row = 0; row < 3; ++row)
            desk.finish(u"EliminaRiga"_s);
        QCOMPARE(desk.grid().cells().tableText(), u"\t\t\r\n"_s);
    }

    /// Codes that are renamed, and what becomes of the rooms that refer to them.
    void renamedCodes_data()
    {
        // Edits are "row.column=text", "+row" inserts a row, "-row" deletes it.
        const auto row = columns<QString, QString, QString>("edits", "asked", "rooms");
        const QString as = u"[A] [A] [B] [Q] [D]"_s;
        row("another code", u"1.2=X"_s, u"choose: 2 vani usano [A]: rinominare?"_s,
            u"[X] [X] [B] [Q] [D]"_s);
        row("one room", u"2.2=X"_s, u"choose: 1 vano usa [B]: rinominare?"_s,
            u"[A] [A] [X] [Q] [D]"_s);
        row("along a chain", u"1.2=B 2.2=C"_s, u"choose: 3 vani usano [A], [B]: rinominare?"_s,
            u"[B] [B] [C] [Q] [D]"_s);
        row("the one for the other", u"1.2=B 2.2=A"_s,
            u"choose: 3 vani usano [A], [B]: rinominare?"_s, u"[B] [B] [A] [Q] [D]"_s);
        row("two by themselves", u"1.2=X 2.2=Y"_s,
            u"choose: 2 vani usano [A]: rinominare?\nchoose: 1 vano usa [B]: rinominare?"_s,
            u"[X] [X] [Y] [Q] [D]"_s);
        row("onto another's", u"1.2=B"_s,
            u"choose: 2 vani usano [A], e restano come sono, perché il codice [B] è anche di "
            "un'altra riga: valgono 0 finché non si scelgono di nuovo.&Memorizza"_s,
            as);
        row("moved down", u"+1 2.2=X"_s, u"choose: 2 vani usano [A]: rinominare?"_s,
            u"[X] [X] [B] [Q] [D]"_s);
        row("moved up", u"-1 1.2=X"_s, u"choose: 1 vano usa [B]: rinominare?"_s,
            u"[A] [A] [X] [Q] [D]"_s);
        row("behind the end", u"4.2=X"_s, u"choose: 1 vano usa [D]: rinominare?"_s,
            u"[A] [A] [B] [Q] [X]"_s);
        row("change of places", u"1.1=2 1.2=B 2.1=1 2.2=A"_s, {}, as);
        row("emptied", u"1.2="_s, {}, as);
        row("another value", u"1.1=9"_s, {}, as);
    }
    void renamedCodes()
    {
        // Rooms of a code that another row keeps are that row's.
        QVERIFY(coefficients::renamedCodes(1, u"1\tA\r\n2\tA\r\n"_s, u"1\tX\r\n2\tA\r\n"_s, {1, 2})
                    .empty());
        QFETCH(QString, edits);
        QFETCH(QString, asked);
        QFETCH(QString, rooms);
        for (const std::optional<int> answer : {std::optional(0), std::optional(1), {}}) {
            Desk desk;
            desk.user.choice = answer;
            const QString list = u"1\tA\r\n2\tB\r\n\t\r\n4\tD\r\n"_s;
            desk.job.Execute(u"UPDATE Variabili SET Var1 = '%1'"_s.arg(list));
            const QStringList stored{u"[A]"_s, u"[A]"_s, u"[B]"_s, u"[Q]"_s, u"[D]"_s};
            desk.job.Execute(u"DELETE FROM Vani"_s);
            for (int room = 1; room <= stored.size(); ++room)
                desk.job.Execute(
                    u"INSERT INTO Vani (Chiave, [Riferimento unità], Posizione, "
                    "Destinazione, Orientamento) VALUES ('%1', 1, %2, '%3', '[A]')"_s.arg(
                        store::roomKey(1, room), QString::number(room), stored[room - 1]));
            desk.openVariabili();
            for (const QString& edit : edits.split(u' ')) {
                const int row = QStringView(edit).mid(edit[0].isDigit() ? 0 : 1, 1).toInt() - 1;
                desk.grid().setCurrentCell(row, 0);
                if (edit.startsWith(u'+'))
                    desk.finish(u"InserisciRiga"_s);
                else if (edit.startsWith(u'-'))
                    desk.finish(u"EliminaRiga"_s);
                else
                    desk.type(row, QStringView(edit).mid(2, 1).toInt() - 1, edit.mid(4));
            }
            desk.finish(u"BtApplica"_s);
            const bool gaveUp = asked.contains(u"choose"_s) && !answer;
            const QString heard =
                (Question + u'\n' + asked).trimmed().replace(u"are?"_s, u"are?&Sì|&No"_s);
            // Who gives up is not asked again, and nothing is stored.
            QCOMPARE(desk.user.said(), gaveUp ? heard.section(u'\n', 0, 1) : heard);
            const auto lists = desk.job.records(store::TabellaVariabili);
            QCOMPARE(lists.text(1) == list, gaveUp);
            QStringList found;
            for (auto room = desk.job.records(store::TabellaVani); !room.atEnd(); room.next()) {
                found << room.text(5);
                QCOMPARE(room.text(6), u"[A]"_s);
            }
            QCOMPARE(found.join(u' '), answer == 0 ? rooms : stored.join(u' '));
        }
    }

    void codesOfStaircases()
    {
        Desk desk;
        desk.openDatiGenerali();
        desk.find<QTabWidget>(u"TabStrip1"_s).setCurrentIndex(2);
        desk.type(2, 0, u"AB"_s);
        const QModelIndex cell = desk.grid().cells().index(2, 0);
        QVERIFY(cell.data(Qt::ToolTipRole).toString().contains(u"«AB»"));
        QVERIFY(desk.remark().contains(u"Riga 3"));
        desk.type(2, 0, u"C"_s);
        QCOMPARE(desk.remark(), QString());
        desk.type(2, 2, u"1,5x"_s); // what the column does not take stays out
        desk.finish(u"BtApplica"_s);
        QCOMPARE(desk.job.records(u"Dati Generali").text(16),
                 u"\t\t\r\n\t\t\r\nC\t\t1.5\r\n"_s + u"\t\t\r\n"_s.repeated(96));
    }

    /// A date that is none keeps the screen open, is named, and loses nothing. A missing record is
    /// added, and what is empty stays Null.
    void dates()
    {
        Desk desk;
        desk.job.Execute(u"DELETE FROM [Dati Generali]"_s);
        desk.openDatiGenerali();
        auto& date = desk.find<TypedLine>(u"Dati3"_s);
        date.setFocus();
        press(u"31022013"_s);
        desk.finish(u"BtOK"_s);
        QVERIFY(desk.isOpen());
        QVERIFY(desk.remark().contains(u"31022013"));
        QTRY_VERIFY(date.hasFocus());
        date.selectAll();
        press(u"28022013<Return>"_s);
        QCOMPARE(date.text(), u"28/02/2013"_s);
        QCOMPARE(desk.remark(), QString());
        desk.finish(u"BtOK"_s);
        QVERIFY(desk.dump().contains(
            u"Dati Generali: [1] - - - [2013-02-28] - - - - - - - - - - - [\t\t\r\n"));
        desk.openDatiGenerali();
        auto& shown = desk.find<TypedLine>(u"Dati3"_s);
        QCOMPARE(shown.text(), u"28/02/2013"_s);
        shown.clear();
        press(u"Ascensore"_s, &desk.find<TypedLine>(u"Dati14"_s));
        desk.finish(u"BtOK"_s);
        QVERIFY(
            desk.dump().contains(u"Dati Generali: [1] - - - - - - - - - - - - - - [Ascensore] ["));
    }

    /// A job that another program changed or holds: reported, and the screen keeps what was typed.
    void failureToStore()
    {
        Desk desk;
        desk.openVariabili();
        desk.type(0, 0, u"1.05"_s);
        desk.job.Execute(u"UPDATE Variabili SET Var1 = 'altro'"_s);
        desk.finish(u"BtOK"_s);
        QCOMPARE(desk.user.said(), Question + u"\nreport: 3197"_s);
        QVERIFY(desk.isOpen() && desk.isChanged());
        QCOMPARE(desk.cell(0, 0), u"1.05"_s);

        desk.openDatiGenerali();
        press(u"Note"_s, &desk.find<widgets::TypedText>(u"Dati2"_s));
        desk.job.Execute(u"PRAGMA query_only = 1"_s);
        desk.finish(u"BtApplica"_s);
        QVERIFY(desk.user.said().startsWith(Question + u"\nreport: "_s));
        QVERIFY(desk.isChanged());
        desk.job.Execute(u"PRAGMA query_only = 0"_s);
        desk.finish(u"BtApplica"_s);
        QCOMPARE(desk.job.records(u"Dati Generali").text(3), u"Note"_s);
    }

    /// Every control has a name, and the Tab key goes through the first page from top to bottom,
    /// then to the buttons.
    void controls()
    {
        Desk desk;
        desk.openVariabili();
        QCOMPARE(test::namelessControls(*desk.screen), QStringList());
        desk.openDatiGenerali();
        QStringList order;
        for (int i = 0; i < 7; ++i) {
            order << QApplication::focusWidget()->objectName();
            press(u"<Tab>"_s);
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
