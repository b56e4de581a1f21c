// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "register/ui/navig.h"
#include "register/ui/parametri.h"
#include "support/screen_desk.h"
#include "widgets/context_menu.h"

#include <QComboBox>
#include <QLabel>
#include <QTabWidget>
#include <QTreeWidgetItemIterator>

namespace zelto::test {

using registro::Navig;
using registro::Parametri;

/// What of the register differs: "-3" and "+33" for units, "3/-2" and "3/+4" for their rooms,
/// "3.Livello=Terra" and "3/2.Ambiente=Sala" for their fields.
class RegisterState
{
public:
    explicit RegisterState(store::Database& lavoro)
    {
        read(lavoro, u"Unità immobiliari"_s, 1);
        read(lavoro, u"Vani"_s, 2);
    }

    [[nodiscard]] QStringList differencesTo(const RegisterState& after) const
    {
        QStringList all;
        for (const auto& [key, text] : m_texts.asKeyValueRange())
            if (!key.contains(u'.') && !after.m_texts.contains(key))
                all << marked(key, u"-"_s);
        for (const auto& [key, text] : after.m_texts.asKeyValueRange()) {
            if (m_texts.contains(key) && m_texts[key] != text)
                all << key + u'=' + text;
            if (!key.contains(u'.') && !m_texts.contains(key))
                all << marked(key, u"+"_s);
        }
        return all;
    }

private:
    static QString marked(QString key, const QString& mark)
    {
        return key.insert(key.indexOf(u'/') + 1, mark);
    }
    void read(store::Database& lavoro, const QString& table, int keys)
    {
        const auto& fields = store::jobTable(table).fields;
        for (auto record = lavoro.records(table); !record.atEnd(); record.next()) {
            QStringList key;
            for (int field = 1; field <= keys; ++field)
                key << record.text(field);
            const QString name = key.join(u'/');
            m_texts[name]; // the record itself
            for (int field = keys + 1; field < record.fieldCount(); ++field)
                m_texts[name + u'.' + fields[static_cast<std::size_t>(field)].name] =
                    record.text(field);
        }
    }

    QMap<QString, QString> m_texts; ///< by "3" and "3/2" for a record, "3.Livello" for a field
};

/// The screen over a copy of the example job.
class Desk : public ScreenDesk
{
public:
    Desk() : ScreenDesk(QStringLiteral(EXAMPLE_JOB)) { reopen(); }

    void reopen()
    {
        auto opened =
            std::make_unique<Parametri>(registro::ParametriContext{job, settings, user, menu});
        opened->resize(1100, 700);
        open(std::move(opened));
        QApplication::processEvents();
    }

    [[nodiscard]] widgets::Grid& units() const { return find<widgets::Grid>(u"UI"_s); }
    [[nodiscard]] widgets::Grid& rooms() const { return find<widgets::Grid>(u"TabFlex"_s); }
    [[nodiscard]] Navig& tree() const { return find<Navig>(u"Navig"_s); }
    [[nodiscard]] QString status() const { return find<QLabel>(u"Stato"_s).text(); }
    [[nodiscard]] QTabWidget& tabs() const { return find<QTabWidget>(u"tbsOptions"_s); }

    /// Turns to the list of units or of rooms.
    void goTo(widgets::Grid& grid) const
    {
        tabs().setCurrentIndex(&grid == &units() ? 0 : 2);
        grid.setFocus();
    }
    void type(widgets::Grid& grid, int row, int column, const QString& text) const
    {
        goTo(grid);
        ScreenDesk::type(grid, row, column, text);
    }
    /// Clicks the first cell of the row.
    void click(int row, Qt::KeyboardModifiers modifiers = {}) const
    {
        const QModelIndex cell = units().cells().index(row, 0);
        units().scrollTo(cell);
        QTest::mouseClick(units().viewport(), Qt::LeftButton, modifiers,
                          units().visualRect(cell).center());
    }
    /// Clicks the node of that text, below its unit's node if one is given.
    void clickNode(const QString& text, const QString& unit = {}) const
    {
        for (auto* node : tree().findItems(unit, Qt::MatchExactly | Qt::MatchRecursive))
            node->setExpanded(true);
        for (auto* node : tree().findItems(text, Qt::MatchExactly | Qt::MatchRecursive))
            if (unit.isEmpty() || node->parent()->text(0) == unit) {
                tree().scrollToItem(node);
                QTest::mouseClick(tree().viewport(), Qt::LeftButton, {},
                                  tree().visualItemRect(node).center());
                return;
            }
        qFatal("no node %s", qPrintable(text));
    }
    void filter(const QString& list, const QString& entry) const
    {
        find<QComboBox>(list).setCurrentText(entry);
    }

    /// All that the three views show.
    [[nodiscard]] QString views() const
    {
        QString text;
        for (const widgets::Grid* grid : {&units(), &rooms()})
            for (int row = 0; row < grid->cells().rowCount(); ++row)
                text += grid->cells().number(row) + u' ';
        text += units().cells().tableText() + rooms().cells().tableText();
        for (QTreeWidgetItemIterator node(&tree()); *node != nullptr; ++node) {
            emit tree().itemExpanded(*node); // has its rooms made
            text += ((*node)->parent() != nullptr ? u"  "_s : QString()) + (*node)->text(0) + u'\n';
        }
        return text;
    }

    widgets::ContextMenu menu;
};

} // namespace zelto::test
