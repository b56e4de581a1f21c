// SPDX-License-Identifier: GPL-3.0-or-later
#include "reports/ui/riparto.h"

#include "widgets/typed_line.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QRadioButton>

#include <algorithm>

namespace zelto::reports {

Riparto::Riparto(const StampaContext& context, QWidget* parent)
    : PrintScreen(u"Riparto"_s, u"Riparto importo"_s, context, parent),
      m_importo(new widgets::TypedLine(widgets::FieldKind::Amount, 12)),
      m_indice(new QCheckBox(u"Calc. indice proporz. alla consist."_s)),
      m_quadratura(new QCheckBox(u"Quadratura al centesimo"_s))
{
    setContents(buildContents(), sectionWords(&Section::inAllocation), {SezioneCalcolo});
    for (const Shares& shares : m_tabSel)
        connect(shares.button, &QRadioButton::toggled, this, &Riparto::TabSel_Click);
    m_tabSel.front().button->setChecked(true);
    m_importo->setFocus();
}

QWidget* Riparto::buildContents()
{
    m_quadratura->setObjectName(u"Quadratura"_s);
    m_quadratura->setToolTip(
        u"Le quote sommano esattamente all'importo: i centesimi che mancano vanno "
        u"ai resti maggiori"_s);
    QHBoxLayout* row = fieldRow(u"Importo da ripartire"_s, *m_importo, 16);
    row->addWidget(m_quadratura);
    row->addStretch(1);

    auto* contents = new QWidget;
    auto* layout = new QVBoxLayout(contents);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addLayout(row);
    layout->addWidget(buildShares());
    return contents;
}

QWidget* Riparto::buildShares()
{
    auto* frame = new QGroupBox(u"Millesimi"_s);
    auto* layout = new QGridLayout(frame);
    int row = 0;
    for (const TableKind& kind : tableKinds()) {
        m_tabSel.push_back(addShares(kind, *layout, row++));
        if (kind.hasIndex)
            layout->addWidget(m_indice, row++, 1);
    }
    m_indice->setObjectName(u"Indice"_s);
    keepPlaceWhenHidden(*m_indice);
    layout->setColumnStretch(1, 1);
    return frame;
}

Riparto::Shares Riparto::addShares(const TableKind& kind, QGridLayout& layout, int row)
{
    auto* button = new QRadioButton(kind.shareCaption);
    button->setObjectName(u"TabSel%1"_s.arg(m_tabSel.size()));
    keepPlaceWhenHidden(*button);
    layout.addWidget(button, row, 0);
    if (kind.listName.isEmpty())
        return {button, nullptr};
    auto* list = new QComboBox;
    list->setObjectName(kind.listName);
    list->setAccessibleName(kind.shareCaption);
    keepPlaceWhenHidden(*list);
    layout.addWidget(list, row, 1);
    for (const TableChoice& choice : kind.choices(modello()))
        list->addItem(choice.label, choice.key);
    button->setVisible(list->count() > 0);
    return {button, list};
}

void Riparto::TabSel_Click()
{
    for (std::size_t i = 0; i < m_tabSel.size(); ++i) {
        const auto& [button, list] = m_tabSel[i];
        if (list != nullptr)
            list->setVisible(button->isChecked());
        if (tableKinds()[i].hasIndex)
            m_indice->setVisible(button->isChecked());
    }
}

OpzioniStampa Riparto::opzioni() const
{
    const auto chosen = std::ranges::find_if(
        m_tabSel, [](const Shares& shares) { return shares.button->isChecked(); });
    const auto kind = static_cast<std::size_t>(chosen - m_tabSel.begin());
    return OpzioniRiparto{
        .importo = m_importo->text(),
        .quote = {.kind = &tableKinds()[kind],
                  .key =
                      chosen->list == nullptr ? QString() : chosen->list->currentData().toString(),
                  .indice = m_indice->isChecked() ? calc::IndicePiano::Proporzionale
                                                  : calc::IndicePiano::PerConsistenza},
        .arrotondamento = m_quadratura->isChecked() ? calc::Arrotondamento::AQuadratura
                                                    : calc::Arrotondamento::PerQuota};
}

} // namespace zelto::reports
