// SPDX-License-Identifier: GPL-3.0-or-later
// A hurried user at random: whatever is pressed or clicked, only what the screen names may change.
#include "parametri_desk.h"
#include "support/runner.h"

#include <QClipboard>
#include <QHeaderView>
#include <QRegularExpression>
#include <QTabBar>

#include <random>

using namespace zelto;
using test::Desk;
using test::RegisterState;

namespace {

enum Tab { Elenco, Dettaglio, Vani };

/// What the screen names before a step: the unit that is current, and the rows and columns that are
/// highlighted.
class Named
{
public:
    explicit Named(const Desk& desk) : m_tab(desk.find<QTabWidget>(u"tbsOptions"_s).currentIndex())
    {
        const int row = desk.units().currentRow();
        const QString listed = row < 0 ? QString() : desk.units().cells().number(row);
        const int inTree = desk.tree().selectedUnit();
        if (!listed.isEmpty() && inTree > 0 && listed.toInt() != inTree)
            m_fault = u"list and tree highlight %1 and %2"_s.arg(listed).arg(inTree);
        m_unit = inTree > 0 ? QString::number(inTree) : listed;
        const widgets::Grid& grid = m_tab == Vani ? desk.rooms() : desk.units();
        const auto [first, last] = grid.selectedRows();
        const QModelIndexList selected = grid.selectionModel()->selectedIndexes();
        for (const QModelIndex& cell : selected)
            m_columns.insert(cell.column());
        for (int at = first - 1; at <= last + 1; ++at)
            if (first >= 0 && at >= 0 && at < grid.cells().rowCount())
                (at < first || at > last ? m_neighbours : m_rows) << grid.cells().number(at);
        if (first >= 0 && (!selected.contains(grid.currentIndex()) ||
                           selected.size() != m_rows.size() * m_columns.size()))
            m_fault = u"%1 cells of rows %2 are selected, %3,%4 is current"_s.arg(selected.size())
                          .arg(m_rows.join(u'-'))
                          .arg(grid.currentRow())
                          .arg(grid.currentColumn());
    }

    [[nodiscard]] const QString& fault() const { return m_fault; }
    [[nodiscard]] const QString& unit() const { return m_unit; }

    /// The difference of one field, record or unit, after a step that may add or move rows.
    [[nodiscard]] bool allows(const QString& difference, bool adds, bool moves) const
    {
        static const QRegularExpression form(u"^([-+]?)(\\d+)(/([-+]?)(\\d+))?(\\.([^=]+)=)?"_s);
        const auto parts = form.match(difference);
        const QString unit = parts.captured(2);
        const QString room = parts.captured(5);
        if (parts.captured(1) == u"+" || parts.captured(4) == u"+")
            return adds || moves;
        if (moves && (m_neighbours.contains(m_tab == Vani ? room : unit)))
            return true;
        if (m_tab == Dettaglio)
            return (unit == m_unit || m_unit.isEmpty()) && room.isEmpty();
        const bool field = !parts.captured(7).isEmpty();
        if (m_tab == Elenco)
            return m_rows.contains(unit) &&
                   (!field || moves || m_columns.contains(columnOf(parts.captured(7))) ||
                    (parts.captured(7) == u"Flag tabelle" && hasFlagColumn()));
        return (unit == m_unit || m_unit.isEmpty()) && m_rows.contains(room) &&
               (!field || moves || m_columns.contains(columnOf(parts.captured(7))));
    }

private:
    [[nodiscard]] int columnOf(const QString& field) const
    {
        const bool rooms = m_tab == Vani;
        const auto& fields =
            store::jobTable(rooms ? store::TabellaVani : store::TabellaUnita).fields;
        const auto found = std::ranges::find(fields, field, &store::FieldDef::name);
        return static_cast<int>(found - fields.begin()) - (rooms ? 3 : 2);
    }
    [[nodiscard]] bool hasFlagColumn() const
    {
        return std::any_of(m_columns.begin(), m_columns.end(), [](int c) { return c >= 4; });
    }

    int m_tab;
    QString m_fault;
    QString m_unit;
    QStringList m_rows;
    QStringList m_neighbours;
    QSet<int> m_columns;
};

class Walk
{
public:
    explicit Walk(unsigned seed) : m_random(seed) {}

    /// One thing that a user does; what it was, for the report.
    QString step(Desk& desk)
    {
        switch (below(12)) {
        case 0:
            return clickCell(desk);
        case 1:
            return clickNode(desk);
        case 2:
            return below(3) == 0 ? filter(desk) : clickTab(desk);
        default:
            return press();
        }
    }

private:
    int below(qsizetype limit)
    {
        return static_cast<int>(m_random() % static_cast<std::size_t>(limit));
    }
    QString press()
    {
        static const QStringList keys =
            u"a b C S 1 2 , . - [ <Space> <Return> <Return> <Return> <Tab> <Tab> <Shift+Tab> <Esc> "
            "<Up> <Down> <Down> <Left> <Right> <Right> <Shift+Down> <Shift+Right> <Ctrl+End> "
            "<Ctrl+Home> <Ctrl+Up> <Ctrl+Down> <Home> <End> <PgDown> <PgUp> <F2> <Del> <Backspace> "
            "<Ctrl+Tab> <Alt+Up> <Alt+Down> <F3> <Ctrl+F> <Ctrl+Z> <Ctrl+Z> <Ctrl+Y> <Ins> "
            "<Ctrl+D> <Ctrl+Del> <Ctrl+Shift+Up> <Ctrl+Shift+Down> <Alt+A> <Meta+B> <Ctrl+V> "
            "<Ctrl+A>"_s.split(u' ');
        const QString& key = keys[below(keys.size())];
        if (QApplication::focusWidget() != nullptr)
            Desk::keys(key);
        return key;
    }
    QString clickCell(Desk& desk)
    {
        widgets::Grid& grid = desk.rooms().isVisible() ? desk.rooms() : desk.units();
        if (!grid.isVisible())
            return u"nothing to click on"_s;
        const QPoint place(below(grid.viewport()->width()), below(grid.viewport()->height()));
        static const QList<Qt::KeyboardModifiers> all{Qt::NoModifier, Qt::NoModifier,
                                                      Qt::ControlModifier, Qt::ShiftModifier};
        QWidget* where = below(8) == 0 ? grid.horizontalHeader()->viewport() : grid.viewport();
        QTest::mouseClick(where, Qt::LeftButton, all[below(all.size())], place);
        return u"click at %1,%2"_s.arg(place.x()).arg(place.y());
    }
    QString clickNode(Desk& desk)
    {
        const QPoint place(below(desk.tree().viewport()->width()),
                           below(desk.tree().viewport()->height()));
        QTest::mouseClick(desk.tree().viewport(), Qt::LeftButton, {}, place);
        return u"tree at %1,%2"_s.arg(place.x()).arg(place.y());
    }
    QString clickTab(Desk& desk)
    {
        auto* bar = desk.find<QTabWidget>(u"tbsOptions"_s).tabBar();
        const int tab = below(3);
        QTest::mouseClick(bar, Qt::LeftButton, {}, bar->tabRect(tab).center());
        return u"tab %1"_s.arg(tab);
    }
    QString filter(Desk& desk)
    {
        auto& list = desk.find<QComboBox>(below(2) == 0 ? u"Livello"_s : u"CodScala"_s);
        const int entry = below(2) == 0 ? 0 : below(list.count());
        list.setCurrentIndex(entry);
        return u"filter %1"_s.arg(list.currentText());
    }

    std::mt19937 m_random;
};

int wanted(const char* variable, int usual)
{
    const int given = qEnvironmentVariableIntValue(variable);
    return given > 0 ? given : usual;
}

} // namespace

class TestWalk : public QObject
{
    Q_OBJECT

private slots:
    void walk()
    {
        constexpr int StepsOfAJob = 250;
        const int jobs = (wanted("ZELTO_STEPS", 500) + StepsOfAJob - 1) / StepsOfAJob;
        int changes = 0;
        for (int job = 0; job < jobs; ++job)
            changes += walkOneJob(wanted("ZELTO_SEED", 20'261'123) + job, StepsOfAJob);
        QVERIFY2(changes > jobs * StepsOfAJob / 40, qPrintable(QString::number(changes)));
    }

private:
    static int walkOneJob(int seed, int steps)
    {
        Desk desk;
        QApplication::clipboard()->setText(u"7,5"_s);
        desk.tree().expandItem(desk.tree().topLevelItem(1)->child(2));
        Walk walk(static_cast<unsigned>(seed));
        RegisterState state(desk.job);
        QStringList done;
        int changes = 0;
        for (int i = 0; i < steps; ++i) {
            const Named before(desk);
            done << walk.step(desk);
            RegisterState now(desk.job);
            const QStringList differences = state.differencesTo(now);
            check(before, Named(desk), done, differences, seed);
            changes += differences.isEmpty() ? 0 : 1;
            state = std::move(now);
        }
        (void)desk.user.said();
        return changes;
    }

    /// Undoing goes to what it changes; everything else changes what was named before.
    static void check(const Named& before, const Named& after, const QStringList& done,
                      const QStringList& differences, int seed)
    {
        const QString& step = done.back();
        const bool replays = step == u"<Ctrl+Z>" || step == u"<Ctrl+Y>";
        const bool adds = step == u"<Ins>" || step == u"<Ctrl+D>";
        const bool moves = step.startsWith(u"<Ctrl+Shift+");
        const auto story = [&](const QString& what) {
            return u"seed %4: %1: %2 after %3"_s
                .arg(what, differences.join(u' '),
                     done.mid(std::max<qsizetype>(done.size() - 12, 0)).join(u' '),
                     QString::number(seed))
                .toUtf8();
        };
        if (!after.fault().isEmpty())
            qFatal("%s", story(after.fault()).constData());
        for (const QString& difference : differences)
            if (!replays && !before.allows(difference, adds, moves))
                qFatal("%s", story(u"not named"_s).constData());
        static const QRegularExpression unit(u"^[-+]?(\\d+)"_s);
        const bool shown =
            std::any_of(differences.begin(), differences.end(), [&](const QString& difference) {
                return difference.startsWith(u'-') ||
                       unit.match(difference).captured(1) == after.unit();
            });
        if (replays && !differences.isEmpty() && !after.unit().isEmpty() && !shown)
            qFatal("%s", story(u"undone elsewhere"_s).constData());
    }
};

ZELTO_TEST(TestWalk)
#include "tst_walk.moc"
