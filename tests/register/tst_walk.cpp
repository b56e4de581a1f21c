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

/// What the screen names before a step: the unit that is current, the rows that are highlighted
/// with their neighbours, and the fields of the columns.
struct Named
{
    explicit Named(const Desk& desk) : tab(desk.tabs().currentIndex())
    {
        const int row = desk.units().currentRow();
        const QString listed = row < 0 ? QString() : desk.units().cells().number(row);
        const int inTree = desk.tree().selectedUnit();
        if (!listed.isEmpty() && inTree > 0 && listed.toInt() != inTree)
            fault = u"list and tree highlight %1 and %2"_s.arg(listed).arg(inTree);
        unit = inTree > 0 ? QString::number(inTree) : listed;
        const widgets::Grid& grid = tab == Vani ? desk.rooms() : desk.units();
        const auto& ofTable =
            store::jobTable(tab == Vani ? store::TabellaVani : store::TabellaUnita).fields;
        const auto [first, last] = grid.selectedRows();
        const QModelIndexList selected = grid.selectionModel()->selectedIndexes();
        QSet<int> columns;
        for (const QModelIndex& cell : selected) {
            columns << cell.column();
            const int field = tab == Vani ? cell.column() + 3 : std::min(cell.column(), 4) + 2;
            fields << ofTable[static_cast<std::size_t>(field)].name; // flags are all in one
        }
        for (int at = first - 1; at <= last + 1; ++at)
            if (first >= 0 && at >= 0 && at < grid.cells().rowCount())
                (at < first || at > last ? neighbours : rows) << grid.cells().number(at);
        if (first >= 0 && (!selected.contains(grid.currentIndex()) ||
                           selected.size() != rows.size() * columns.size()))
            fault = u"%1 cells of rows %2 are selected, %3,%4 is current"_s.arg(selected.size())
                        .arg(rows.join(u'-'))
                        .arg(grid.currentRow())
                        .arg(grid.currentColumn());
    }

    /// The difference of one field, record or unit, after a step that may add or move rows.
    [[nodiscard]] bool allows(const QString& difference, bool adds, bool moves) const
    {
        static const QRegularExpression form(
            u"^([-+]?)(\\d+)(?:/([-+]?)(\\d+))?(?:\\.([^=]+)=)?"_s);
        const QStringList parts = form.match(difference).capturedTexts();
        const QString room = parts.value(4);
        const QString field = parts.value(5);
        const QString& row = tab == Vani ? room : parts[2];
        const bool ofUnit = unit.isEmpty() || unit == parts[2];
        if (parts[1] == u"+" || parts.value(3) == u"+")
            return adds || moves;
        if (moves && neighbours.contains(row))
            return true;
        if (tab == Dettaglio)
            return ofUnit && room.isEmpty();
        return (tab == Elenco || ofUnit) && rows.contains(row) &&
               (field.isEmpty() || moves || fields.contains(field));
    }

    int tab;
    QString fault;
    QString unit;
    QStringList rows;
    QStringList neighbours;
    QSet<QString> fields;
};

class Walk
{
public:
    explicit Walk(unsigned seed) : m_random(seed) {}

    /// One thing that a user does; what it was, for the report.
    QString step(Desk& desk)
    {
        const widgets::Grid& grid = desk.rooms().isVisible() ? desk.rooms() : desk.units();
        switch (below(12)) {
        case 0:
            if (!grid.isVisible())
                return u"nothing to click on"_s;
            return click(below(8) == 0 ? grid.horizontalHeader()->viewport() : grid.viewport());
        case 1:
            return click(desk.tree().viewport());
        case 2:
            return below(3) == 0 ? filter(desk) : click(desk.tabs().tabBar());
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
            test::press(key);
        return key;
    }
    QString click(QWidget* where)
    {
        const QPoint place(below(where->width()), below(where->height()));
        static const QList<Qt::KeyboardModifiers> all{Qt::NoModifier, Qt::NoModifier,
                                                      Qt::ControlModifier, Qt::ShiftModifier};
        QTest::mouseClick(where, Qt::LeftButton, all[below(all.size())], place);
        return u"click in %1 at %2,%3"_s.arg(where->parent()->objectName())
            .arg(place.x())
            .arg(place.y());
    }
    QString filter(Desk& desk)
    {
        auto& list = desk.find<QComboBox>(below(2) == 0 ? u"Livello"_s : u"CodScala"_s);
        list.setCurrentIndex(below(2) == 0 ? 0 : below(list.count()));
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
        if (!after.fault.isEmpty())
            qFatal("%s", story(after.fault).constData());
        for (const QString& difference : differences)
            if (!replays && !before.allows(difference, adds, moves))
                qFatal("%s", story(u"not named"_s).constData());
        static const QRegularExpression unit(u"^[-+]?(\\d+)"_s);
        const bool shown = std::ranges::any_of(differences, [&](const QString& difference) {
            return difference.startsWith(u'-') || unit.match(difference).captured(1) == after.unit;
        });
        if (replays && !differences.isEmpty() && !after.unit.isEmpty() && !shown)
            qFatal("%s", story(u"undone elsewhere"_s).constData());
    }
};

ZELTO_TEST(TestWalk)
#include "tst_walk.moc"
