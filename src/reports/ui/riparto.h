// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "reports/ui/print_screen.h"

class QComboBox;
class QGridLayout;
class QRadioButton;

namespace zelto::reports {

/// The allocation screen "Riparto importo".
class Riparto : public PrintScreen
{
    Q_OBJECT

public:
    Riparto(const StampaContext& context, QWidget* parent = nullptr);

protected:
    [[nodiscard]] OpzioniStampa opzioni() const override;

private:
    /// The button of a kind of tables, and the list of those that there are; none when there is
    /// only one.
    struct Shares
    {
        QRadioButton* button = nullptr;
        QComboBox* list = nullptr;
    };

    QWidget* buildContents();
    QWidget* buildShares();
    Shares addShares(const TableKind& kind, QGridLayout& layout, int row);
    void TabSel_Click();

    widgets::TypedLine* m_importo;
    std::vector<Shares> m_tabSel; ///< of the kinds of tables
    QCheckBox* m_indice;
    QCheckBox* m_quadratura;
};

} // namespace zelto::reports
