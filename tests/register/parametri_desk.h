// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "register/ui/navig.h"
#include "register/ui/parametri.h"
#include "register/ui/room_list.h"
#include "register_fixture.h"
#include "store/settings.h"
#include "support/dump.h"
#include "support/scripted_user.h"
#include "widgets/context_menu.h"
#include "widgets/grid.h"

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QTabWidget>
#include <QTest>
#include <QTreeWidgetItemIterator>

namespace zelto::test {

using registro::Navig;
using registro::Parametri;
using registro::ParametriContext;

/// What of the register differs: "-3" and "+33" for units, "3/-2" and "3/+4" for their rooms,
/// "3.Livello=Terra" and "3/2.Ambiente=Sala" for their fields.
class RegisterState
{
public:
    explicit RegisterState(store::Database& lavoro)
    {
        read(lavoro, u"Unità immobiliari"_s, 1, 2);
        read(lavoro, u"Vani"_s, 2, 3);
    }

    [[nodiscard]] QStringList differencesTo(const RegisterState& after) const
    {
        QStringList all;
        for (const auto& [key, fields] : m_records.asKeyValueRange())
            if (!after.m_records.contains(key))
                all << marked(key, u"-"_s);
        for (const auto& [key, fields] : after.m_records.asKeyValueRange()) {
            if (!m_records.contains(key)) {
                all << marked(key, u"+"_s);
                continue;
            }
            for (const auto& [field, text] : fields.asKeyValueRange())
                if (m_records[key][field] != text)
                    all << key + u'.' + field + u'=' + text;
        }
        return all;
    }

private:
    static QString marked(QString key, const QString& mark)
    {
        return key.insert(key.indexOf(u'/') + 1, mark);
    }
    void read(store::Database& lavoro, const QString& table, int keys, int first)
    {
        auto record = lavoro.query(u"SELECT * FROM [%1]"_s.arg(table));
        const auto names = store::jobTable(table).fields;
        for (; !record.atEnd(); record.next()) {
            QStringList key;
            for (int field = 1; field <= keys; ++field)
                key << record.text(field);
            auto& fields = m_records[key.join(u'/')];
            for (int field = first; field < record.fieldCount(); ++field)
                fields[names[static_cast<std::size_t>(field)].name] = record.text(field);
        }
    }

    QMap<QString, QMap<QString, QString>> m_records;
};

/// The screen over a copy of the example job.
class Desk
{
public:
    Desk() : job(openCopy(folder)) { open(); }

    void open()
    {
        screen = std::make_unique<Parametri>(ParametriContext{job, settings, user, menu});
        screen->resize(1100, 700);
        screen->show();
        if (!QTest::qWaitForWindowActive(screen.get()))
            qFatal("the screen does not appear");
        QApplication::processEvents();
    }

    template <typename Widget>
    [[nodiscard]] Widget& find(const QString& name) const
    {
        auto* found = screen->findChild<Widget*>(name);
        if (found == nullptr)
            qFatal("%s is missing", qPrintable(name));
        return *found;
    }
    [[nodiscard]] widgets::Grid& units() const { return find<widgets::Grid>(u"UI"_s); }
    [[nodiscard]] widgets::Grid& rooms() const { return find<widgets::Grid>(u"TabFlex"_s); }
    [[nodiscard]] Navig& tree() const { return find<Navig>(u"Navig"_s); }
    [[nodiscard]] QString status() const { return find<QLabel>(u"Stato"_s).text(); }
    void show(int tab) const { find<QTabWidget>(u"tbsOptions"_s).setCurrentIndex(tab); }

    /// The cell becomes the current one and gets the keys, the last ones where the focus is then.
    void type(widgets::Grid& grid, int row, int column, const QString& text) const
    {
        show(&grid == &units() ? 0 : 2);
        grid.setFocus();
        grid.setCurrentCell(row, column);
        QTest::keyClicks(&grid, text.left(1));
        QTest::keyClicks(QApplication::focusWidget(), text.mid(1));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    }
    void selectRows(widgets::Grid& grid, int first, int last) const
    {
        show(&grid == &units() ? 0 : 2);
        grid.setFocus();
        grid.setCurrentCell(first, 0);
        for (int row = first; row < last; ++row)
            QTest::keyClick(&grid, Qt::Key_Down, Qt::ShiftModifier);
    }
    /// Characters as they are, keys by their names: "Sala<Down><Ctrl+D>". Each goes where the focus
    /// is then. Returns how many were pressed.
    static int keys(const QString& script)
    {
        int count = 0;
        for (qsizetype at = 0; at < script.size(); ++at, ++count) {
            if (script[at] != u'<') {
                QTest::sendKeyEvent(QTest::Click, QApplication::focusWidget(),
                                    static_cast<Qt::Key>(script[at].toUpper().unicode()),
                                    script[at], Qt::NoModifier);
                continue;
            }
            const qsizetype end = script.indexOf(u'>', at);
            const auto key = QKeySequence::fromString(script.mid(at + 1, end - at - 1))[0];
            const bool back = key == QKeyCombination(Qt::SHIFT | Qt::Key_Tab);
            QTest::keyClick(QApplication::focusWidget(), back ? Qt::Key_Backtab : key.key(),
                            key.keyboardModifiers());
            at = end;
        }
        return count;
    }
    void click(widgets::Grid& grid, int row, int column,
               Qt::KeyboardModifiers modifiers = Qt::NoModifier) const
    {
        grid.scrollTo(grid.cells().index(row, column));
        QTest::mouseClick(grid.viewport(), Qt::LeftButton, modifiers,
                          grid.visualRect(grid.cells().index(row, column)).center());
    }
    /// Clicks the node of that text, below its unit's node if one is given.
    void clickNode(const QString& text, const QString& unit = {}) const
    {
        for (QTreeWidgetItemIterator node(&tree()); *node != nullptr; ++node)
            if ((*node)->text(0) == text &&
                (unit.isEmpty() || (*node)->parent()->text(0) == unit)) {
                tree().scrollToItem(*node);
                QTest::mouseClick(tree().viewport(), Qt::LeftButton, {},
                                  tree().visualItemRect(*node).center());
                return;
            }
        qFatal("no node %s", qPrintable(text));
    }
    void filter(const QString& list, const QString& entry) const
    {
        find<QComboBox>(list).setCurrentText(entry);
    }
    static void press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(QApplication::focusWidget(), static_cast<Qt::Key>(key), modifiers);
    }

    [[nodiscard]] QString dump() { return dumpOf(job); }

    /// All that the three views show.
    [[nodiscard]] QString views() const
    {
        QString text;
        for (const widgets::Grid* grid : {&units(), &rooms()})
            for (int row = 0; row < grid->cells().rowCount(); ++row)
                text += grid->cells().number(row) + u' ';
        text += units().cells().tableText() + rooms().cells().tableText();
        for (QTreeWidgetItemIterator node(&tree()); *node != nullptr; ++node)
            text += ((*node)->parent() != nullptr ? u"  "_s : QString()) + (*node)->text(0) + u'\n';
        return text;
    }

    JobFolder folder;
    store::Database job;
    store::Settings settings{folder.file(u"Zelto.ini"_s)};
    ScriptedUser user{folder.file({})};
    widgets::ContextMenu menu;
    std::unique_ptr<Parametri> screen;

private:
    static store::Database openCopy(const JobFolder& folder)
    {
        QFile::copy(QStringLiteral(EXAMPLE_JOB), folder.file(u"A.ZLT"_s));
        return store::Database::open(folder.file(u"A.ZLT"_s));
    }
};

} // namespace zelto::test
