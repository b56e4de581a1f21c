// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QListWidget>

namespace zelto::widgets {

/// A list laid over a cell or a field, from which one entry is chosen: by Enter or a click. Esc and
/// the loss of the focus hide it without a choice. A typed character goes to the next entry that
/// begins with it, or whose code in brackets does, or else to one whose value does.
class CellPicker : public QListWidget
{
    Q_OBJECT

public:
    /// Which entry is current at first, if any.
    enum class Match { Whole, Beginning };

    explicit CellPicker(QWidget* parent);

    /// Shows the entries with their first row over the place, in coordinates of the parent, and as
    /// wide at least; of what does not fit below, the list moves up. With Match::Beginning the
    /// first entry is current when none begins with the text.
    void open(const QStringList& entries, const QRect& place, const QString& text, Match match);

    /// Goes to the character that the list was opened with; those of no character change nothing.
    void searchFor(int keyCode);
    void keyboardSearch(const QString& typed) override;

signals:
    /// The list is hidden already.
    void chosen(const QString& entry);
    void dismissed();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    void choose(QListWidgetItem* item);
    void dismiss();
    void placeOver(const QRect& place);
};

} // namespace zelto::widgets
