// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "reports/ui/print_screen.h"

class QComboBox;
class QGridLayout;
class QRadioButton;

namespace zelto::widgets {
class TypedLine;
} // namespace zelto::widgets

namespace zelto::reports {

/// The allocation screen "Riparto importo".
class Riparto : public PrintScreen
{
    Q_OBJECT

public:
    Riparto(const StampaContext& context, QWidget* parent = nullptr);

protected:
    bool isReady() override { return true; }
    void print(const ReportContext& context) override;
    [[nodiscard]] std::vector<TableReport> tables() const override;
    [[nodiscard]] QString printTitle() const override;

private:
    enum Tab { Generali, Specifica, Scala };

    QWidget* buildContents();
    QWidget* buildShares();
    void addOption(QGridLayout& layout, Tab tab, const QString& caption);
    QComboBox* addList(QGridLayout& layout, Tab tab, const QString& name, const QString& caption);
    void fillLists();
    void TabSel_Click();
    [[nodiscard]] OpzioniRiparto opzioni() const;

    widgets::TypedLine* m_importo;
    std::array<QRadioButton*, 3> m_tabSel{};
    QComboBox* m_tabella = nullptr;
    QComboBox* m_scala = nullptr;
    QCheckBox* m_indice;
    QCheckBox* m_quadratura;
};

} // namespace zelto::reports
