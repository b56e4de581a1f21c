// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "reports/ui/print_screen.h"

class QBoxLayout;
class QRadioButton;

namespace zelto::reports {

/// The calculation screen "Calcolo millesimi".
class Millesimi : public PrintScreen
{
    Q_OBJECT

public:
    Millesimi(const StampaContext& context, QWidget* parent = nullptr);

protected:
    [[nodiscard]] bool isReady() const override { return !sezioni().isEmpty(); }
    [[nodiscard]] OpzioniStampa opzioni() const override;

private:
    QWidget* buildContents();
    QWidget* buildSelection();
    /// A box below the ones before it, further in for an option of the last.
    QCheckBox* addBox(QBoxLayout& layout, const QString& caption, int indent = 0);
    QWidget* buildFormat();

    widgets::TypedLine* m_primaPagina;
    QCheckBox* m_dettaglio = nullptr;
    std::vector<QCheckBox*> m_tabelle; ///< of the kinds of tables
    QCheckBox* m_indice = nullptr;
    QRadioButton* m_esteso;
    QRadioButton* m_compatto;
};

} // namespace zelto::reports
