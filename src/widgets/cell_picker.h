// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QFrame>
#include <QString>

#include <vector>

class QLabel;
class QTreeWidget;

namespace zelto::widgets {

/// One line of a picker; all of it empty for the choice of nothing.
struct PickerEntry
{
    QString code;
    QString value;
    QString description;

    [[nodiscard]] bool isBlank() const { return code.isEmpty() && value.isEmpty(); }
};

/// A list laid over a cell or a field, from which one entry is chosen: by Enter, Tab or a click.
/// Esc and the loss of the focus hide it without a choice. What is typed stands above the list and
/// selects the entry that is meant: the one of that code, else the first whose code begins so, else
/// the first whose value does, with a comma for its point if one likes; or none. Letter case counts
/// only where an entry matches with it.
class CellPicker : public QFrame
{
    Q_OBJECT

public:
    /// Where the user goes on after a choice.
    enum class Then { Stays, Next, Previous };

    explicit CellPicker(QWidget* parent);

    /// Shows the entries, the current one selected (-1 for none), with the first one over the
    /// place, in coordinates of the parent, and as wide at least; a list that does not fit below
    /// moves up. A character but a blank begins what is typed.
    void open(const std::vector<PickerEntry>& entries, int current, const QRect& place,
              const QString& typed);

    /// Hides the list, if it is open, without a choice.
    void dismiss();

signals:
    /// The list is hidden already.
    void chosen(int entry, zelto::widgets::CellPicker::Then then);
    void dismissed();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    bool filterKey(int key, const QString& typed);
    void fill();
    void search(const QString& typed);
    void select(int entry);
    /// Index of the selected entry, -1 for none.
    [[nodiscard]] int selected() const;
    void choose(Then then);
    void placeOver(const QRect& place);

    QLabel* m_typed;
    QTreeWidget* m_list;
    std::vector<PickerEntry> m_entries;
    QString m_search;
    int m_opened = -1; ///< what was selected at first
};

} // namespace zelto::widgets
