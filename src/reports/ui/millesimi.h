// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "reports/ui/print_screen.h"

class QRadioButton;

namespace zelto::widgets {
class TypedLine;
} // namespace zelto::widgets

namespace zelto::reports {

/// The calculation screen "Calcolo millesimi".
class Millesimi : public PrintScreen
{
    Q_OBJECT

public:
    Millesimi(const StampaContext& context, QWidget* parent = nullptr);

protected:
    bool isReady() override;
    void print(const ReportContext& context) override;
    [[nodiscard]] std::vector<TableReport> tables() const override;
    [[nodiscard]] QString printTitle() const override;

private:
    /// The calculation sections and the option of the last one.
    enum Tab { Dettaglio, Generali, Tabelle, Scale, Indice };

    QWidget* buildContents();
    QWidget* buildSelection();
    QWidget* buildFormat();
    [[nodiscard]] OpzioniCalcolo opzioni() const;

    widgets::TypedLine* m_primaPagina;
    std::array<QCheckBox*, 5> m_tabSel{};
    QRadioButton* m_esteso;
    QRadioButton* m_compatto;
};

} // namespace zelto::reports
