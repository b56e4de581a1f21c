// SPDX-License-Identifier: GPL-3.0-or-later
// The check of a job beside the work, in the whole program.
#include "coefficients/ui/dati_generali.h"
#include "coefficients/ui/variabili.h"
#include "register/ui/controllo.h"
#include "register/ui/parametri.h"
#include "reports/ui/millesimi.h"
#include "support/accessible_names.h"
#include "support/print_office.h"
#include "support/runner.h"
#include "ui/window_fixture.h"
#include "widgets/grid.h"
#include "widgets/typed_line.h"

#include <QClipboard>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTabBar>
#include <QTreeView>

#include <functional>

using namespace Qt::StringLiterals;
using namespace zelto;
using test::inModal;

class TestControllo : public QObject
{
    Q_OBJECT

    std::unique_ptr<test::Session> m_session;
    QString m_job;

    template <typename Widget>
    [[nodiscard]] Widget* find(const QString& name = {}) const
    {
        return m_session->window().findChild<Widget*>(name);
    }
    [[nodiscard]] QTreeView& list() const { return *find<QTreeView>(u"Osservazioni"_s); }
    [[nodiscard]] QString counts() const { return find<QToolButton>(u"Conteggio"_s)->text(); }

    /// What the list shows, kinds with their remarks' places.
    [[nodiscard]] QStringList shown() const
    {
        QStringList lines;
        const QAbstractItemModel& model = *list().model();
        for (int kind = 0; kind < model.rowCount({}); ++kind) {
            const QModelIndex parent = model.index(kind, 0, {});
            lines << parent.data().toString();
            for (int row = 0; row < model.rowCount(parent); ++row)
                lines << u"- "_s + model.index(row, 0, parent).data().toString();
        }
        return lines;
    }
    void select(const QString& place)
    {
        m_session->window().activateWindow(); // where there is no window manager to do it
        list().setFocus();
        if (!QTest::qWaitForWindowActive(&m_session->window()))
            qFatal("the window does not become active");
        const QAbstractItemModel& model = *list().model();
        const QModelIndexList found = model.match(model.index(0, 0, {}), Qt::DisplayRole, place, 1,
                                                  Qt::MatchStartsWith | Qt::MatchRecursive);
        if (found.isEmpty())
            qFatal("nothing is said of %s", qPrintable(place));
        list().setCurrentIndex(found.front());
    }
    void goTo(const QString& place)
    {
        select(place);
        press(Qt::Key_Return);
    }
    /// Goes there by way of a modal screen.
    template <typename Screen>
    void inScreen(const QString& place, const std::function<void(QDialog& screen)>& act)
    {
        select(place);
        inModal<Screen>([] { press(Qt::Key_Return); }, act);
    }
    static void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    }
    [[nodiscard]] static QString currentCell()
    {
        const auto* grid = qobject_cast<widgets::Grid*>(QApplication::focusWidget());
        return grid == nullptr ? u"no grid"_s
                               : u"%1 %2.%3"_s.arg(grid->objectName())
                                     .arg(grid->currentRow() + 1)
                                     .arg(grid->currentColumn() + 1);
    }
    void change(const QString& sql) const { store::Database::open(m_job).Execute(sql); }

private slots:
    void init()
    {
        m_session = std::make_unique<test::Session>();
        m_job = m_session->installation.newJob(u"A.ZLT"_s);
        change(u"UPDATE Vani SET Luminosità = '0,97' WHERE Chiave = '    8    4'"_s);
        change(u"UPDATE Vani SET Destinazione = '[Q]' WHERE Chiave = '    3    1'"_s);
        change(u"UPDATE [Unità immobiliari] SET [Codice scala] = 'Z' WHERE Chiave = '    5'"_s);
        change(u"UPDATE [Unità immobiliari] SET [Flag tabelle] = 'X  X' WHERE Chiave = '    6'"_s);
        change(u"UPDATE [Dati Generali] SET Relazione = NULL, [Tabella 2] = NULL, [Tabella Codici] "
               "= [Tabella Codici] || 'A' || char(9) || char(9) || '1'"_s);
        change(u"INSERT INTO Vani (Chiave, [Riferimento unità], Posizione) VALUES "
               "('   99    1', 99, 1)"_s);
        m_session->application().open(m_job);
        m_session->toolbarButton(u"Parametri"_s)->click();
        QTRY_VERIFY(counts().startsWith(u"4 errori"));
        press(Qt::Key_F7);
        QTRY_VERIFY(list().hasFocus());
    }

    void remarksByKind()
    {
        const QString all = shown().join(u'\n');
        QVERIFY2(all.startsWith(u"4 errori\n- Dati generali, tabella 2\n- unità 3 (Negozio 3 - "),
                 qPrintable(all));
        QVERIFY(all.contains(u"avvisi\n- "_s) && all.contains(u"note\n- Dati generali\n"_s));
        QCOMPARE(test::namelessControls(*find<registro::Controllo>()), QStringList());
        auto& filter = *find<QLineEdit>(u"Filtro"_s);
        filter.setFocus();
        QTest::keyClicks(&filter, u"disimpegno"_s);
        QCOMPARE(shown(), (QStringList{u"1 errore"_s, u"- unità 8 (A/3 - Dalmasi), vano 4 "
                                                      "(Disimpegno), Luminosità"_s}));
        QVERIFY(find<QLabel>(u"Conteggio"_s)->text().endsWith(u"note)") &&
                find<QLabel>(u"Conteggio"_s)->text().contains(u" (4 errori, "));
        // A field's own key before the screen's.
        press(Qt::Key_Z, Qt::ControlModifier);
        press(Qt::Key_Y, Qt::ControlModifier);
        QCOMPARE(filter.text(), u"disimpegno"_s);
        press(Qt::Key_Return);
        press(Qt::Key_C, Qt::ControlModifier);
        QVERIFY(QApplication::clipboard()->text().contains(u"«0,97» non è un numero"_s));
        press(Qt::Key_Escape);
        QVERIFY(!list().isVisible());
        press(Qt::Key_F7);
        QVERIFY(list().isVisible());
    }

    /// Enter leads to the cell, F7 back; what is typed there changes the list at once.
    void cells()
    {
        goTo(u"unità 8"_s);
        QCOMPARE(currentCell(), u"TabFlex 4.6"_s);
        const auto heading = [] {
            const auto& grid = *qobject_cast<widgets::Grid*>(QApplication::focusWidget());
            return grid.cells().column(grid.currentColumn()).header;
        };
        QVERIFY(list().currentIndex().data().toString().endsWith(u", "_s + heading()));
        QTest::keyClicks(QApplication::focusWidget(), u"1"_s);
        press(Qt::Key_Escape);
        QVERIFY(counts().startsWith(u"4 errori"));
        press(Qt::Key_Delete);
        QTRY_VERIFY(counts().startsWith(u"3 errori"));
        QVERIFY(shown().contains(
            u"- unità 8 (A/3 - Dalmasi), vano 4 (Disimpegno), Luminosità"_s)); // empty now
        press(Qt::Key_F7);
        QVERIFY(list().hasFocus());
        press(Qt::Key_Z, Qt::ControlModifier);
        QVERIFY(counts().startsWith(u"4 errori"));
        goTo(u"unità 5"_s);
        QCOMPARE(currentCell(), u"UI 5.3"_s);
        QVERIFY(list().currentIndex().data().toString().endsWith(u", "_s + heading()));
        press(Qt::Key_F7);
        press(Qt::Key_F7);
        QCOMPARE(currentCell(), u"UI 5.3"_s);
        goTo(u"unità 6 (A/1 - Bellandi), T4"_s);
        QCOMPARE(currentCell(), u"UI 6.8"_s); // of special table 4
        find<QComboBox>(u"CodScala"_s)->setCurrentText(u"B"_s);
        goTo(u"unità 6 (A/1 - Bellandi), T4"_s);
        QCOMPARE(currentCell(), u"UI 6.8"_s); // listed again
        const QString before = counts();
        (void)m_session->user.said();
        goTo(u"vano 1"_s); // of no unit
        QVERIFY(m_session->user.said().startsWith(u"confirm: L'unità 99 non c'è più"));
        QVERIFY(!shown().contains(u"- vano 1"_s));
        press(Qt::Key_Z, Qt::ControlModifier);
        QVERIFY(shown().contains(u"- vano 1"_s));
        QCOMPARE(counts(), before);
    }

    /// Remarks on lists open their screen at the row.
    void screens()
    {
        using coefficients::DatiGenerali;
        const auto hasFocus = [](const QString& name) {
            return
                [name](QDialog& screen) { QCOMPARE(screen.focusWidget()->accessibleName(), name); };
        };
        inScreen<DatiGenerali>(u"Dati generali, tabella 2"_s, hasFocus(u"Tabella 2"_s));
        inScreen<DatiGenerali>(u"Dati generali, scala A"_s,
                               [](QDialog&) { QCOMPARE(currentCell(), u"Lavori 3.1"_s); });
        inScreen<coefficients::Variabili>(
            u"Variabili, Orientamento, riga 7"_s, [](QDialog& screen) {
                QCOMPARE(screen.findChild<QTabBar*>()->currentIndex(), 1);
                QCOMPARE(currentCell(), u"Lavori 7.2"_s); // of the code
            });
        select(u"Variabili, Orientamento, riga 7"_s);
        const QModelIndex notes = list().currentIndex().parent();
        list().setCurrentIndex(list().model()->index(0, 0, notes));
        inModal<DatiGenerali>([&] { find<QPushButton>(u"Vai"_s)->click(); },
                              hasFocus(u"Relazione"_s));
    }

    /// The print screens tell how much is odd, and lead to it.
    void beforePrinting()
    {
        press(Qt::Key_Escape);
        QVERIFY(!list().isVisible());
        inModal<reports::Millesimi>([&] { press(Qt::Key_M, Qt::ControlModifier); },
                                    [&](QDialog& screen) {
                                        auto* show = screen.findChild<QPushButton*>(u"Mostra"_s);
                                        QVERIFY(show->text().startsWith(u"4 errori, "));
                                        QVERIFY(show->text().endsWith(u" - &Mostra"));
                                        show->click();
                                        QVERIFY(!screen.isVisible());
                                    });
        QTRY_VERIFY(list().isVisible() && list().hasFocus());
    }

    /// With the screen goes the panel.
    void closing()
    {
        QVERIFY(m_session->window().closeDocumentWindows());
        QTRY_VERIFY(find<registro::Controllo>() == nullptr);
        m_session->toolbarButton(u"Parametri"_s)->click();
        QTRY_VERIFY(counts().startsWith(u"4 errori"));
    }
};

ZELTO_TEST(TestControllo)
#include "tst_controllo.moc"
