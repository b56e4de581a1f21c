// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "register/ui/register_grid.h"

class QLabel;

namespace zelto::registro {

/// The panel "Vani": whose rooms they are, and the grid with them.
class RoomList : public RegisterGrid
{
    Q_OBJECT

public:
    explicit RoomList(const RegisterGridContext& context, QWidget* parent = nullptr);

    /// Shows the rooms of the model's unit: of another one from the first on.
    void showRows() override;

protected:
    void choose(int row, int column, int entry) override;
    [[nodiscard]] bool concerns(const RecordChange& change) const override;
    [[nodiscard]] int numberOf(const RecordChange& change) const override;
    [[nodiscard]] int fieldOf(int column) const override;
    [[nodiscard]] bool canAdd() const override;
    RegisterChange store(Register& registro, const QList<FieldEdit>& edits,
                         const QList<NewTexts>& added) override;
    RegisterChange add(Register& registro) override;
    RegisterChange remove(Register& registro, const QList<int>& numbers) override;
    RegisterChange duplicate(Register& registro, const QList<int>& numbers) override;
    RegisterChange exchange(Register& registro, const QList<std::pair<int, int>>& pairs) override;

private:
    [[nodiscard]] int unit() const { return model().unit().number; }
    [[nodiscard]] QString title() const;
    [[nodiscard]] const std::vector<CoefficientEntry>& entriesOf(int column) const;
    void openEntries(int row, int column, const QString& typed);

    QLabel* m_title;
    int m_shown = 0; ///< the unit whose rooms are shown
};

} // namespace zelto::registro
