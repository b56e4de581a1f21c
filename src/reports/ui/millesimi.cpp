// SPDX-License-Identifier: GPL-3.0-or-later
#include "reports/ui/millesimi.h"

#include "widgets/keep_room.h"
#include "widgets/typed_line.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QRadioButton>

namespace zelto::reports {

using widgets::TypedLine;

Millesimi::Millesimi(const StampaContext& context, QWidget* parent)
    : PrintScreen(u"Millesimi"_s, u"Calcolo millesimi"_s, {DocumentoCalcolo}, context, parent),
      m_primaPagina(new TypedLine(u"IOL"_s, 3)), m_esteso(new QRadioButton(u"Esteso"_s)),
      m_compatto(new QRadioButton(u"Compatto"_s))
{
    setContents(buildContents());
    m_primaPagina->setFocus();
}

QWidget* Millesimi::buildContents()
{
    const QString caption = u"Numero prima pagina di stampa"_s;
    m_primaPagina->setObjectName(u"Dati0"_s);
    m_primaPagina->setAccessibleName(caption);
    m_primaPagina->setText(u"1"_s);
    m_primaPagina->setAlignment(Qt::AlignRight);
    m_primaPagina->setMaximumWidth(m_primaPagina->fontMetrics().horizontalAdvance(u'0') * 8);
    auto* label = new QLabel(caption);
    label->setBuddy(m_primaPagina);

    auto* contents = new QWidget;
    auto* layout = new QVBoxLayout(contents);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* row = new QHBoxLayout;
    row->addWidget(label);
    row->addWidget(m_primaPagina);
    row->addStretch(1);
    layout->addLayout(row);
    auto* columns = new QHBoxLayout;
    columns->addWidget(buildSelection(), 1);
    columns->addWidget(buildFormat(), 0, Qt::AlignTop);
    layout->addLayout(columns);
    return contents;
}

QWidget* Millesimi::buildSelection()
{
    const std::array captions{u"Dettaglio U.I."_s, u"Millesimi generali"_s, u"Tabelle"_s,
                              u"Scale"_s, u"Calc. indice prop. cons."_s};
    constexpr int Indent = 24;
    auto* frame = new QGroupBox(u"Sezioni del calcolo"_s);
    auto* layout = new QVBoxLayout(frame);
    for (std::size_t i = 0; i < m_tabSel.size(); ++i) {
        m_tabSel[i] = new QCheckBox(captions[i]);
        m_tabSel[i]->setObjectName(u"TabSel%1"_s.arg(i));
        m_tabSel[i]->setChecked(i != Indice);
        auto* row = new QHBoxLayout;
        if (i == Indice)
            row->addSpacing(Indent); // an option of the box above it
        row->addWidget(m_tabSel[i]);
        layout->addLayout(row);
    }
    widgets::keepRoomWhenHidden(*m_tabSel[Indice]);
    connect(m_tabSel[Scale], &QCheckBox::toggled, m_tabSel[Indice], &QWidget::setVisible);
    return frame;
}

QWidget* Millesimi::buildFormat()
{
    auto* frame = new QGroupBox(u"Formato dettaglio"_s);
    auto* layout = new QVBoxLayout(frame);
    m_esteso->setObjectName(u"OpzSta0"_s);
    m_compatto->setObjectName(u"OpzSta1"_s);
    m_compatto->setChecked(true);
    layout->addWidget(m_esteso);
    layout->addWidget(m_compatto);
    connect(m_tabSel[Dettaglio], &QCheckBox::toggled, frame, &QWidget::setEnabled);
    return frame;
}

OpzioniCalcolo Millesimi::opzioni() const
{
    const auto isChosen = [this](Tab tab) { return m_tabSel[tab]->isChecked(); };
    const bool hasNumber = !m_primaPagina->text().isEmpty();
    return {.dettaglio = isChosen(Dettaglio),
            .generali = isChosen(Generali),
            .tabelle = isChosen(Tabelle),
            .scale = isChosen(Scale),
            .formato =
                m_esteso->isChecked() ? FormatoDettaglio::Esteso : FormatoDettaglio::Compatto,
            .indice = isChosen(Indice) ? calc::IndicePiano::Proporzionale
                                       : calc::IndicePiano::PerConsistenza,
            .primaPagina = hasNumber ? m_primaPagina->text().toInt() : 1};
}

bool Millesimi::isReady()
{
    const SezioniStampa chosen = sezioni();
    return chosen.primaPagina || chosen.relazione || chosen.calcolo;
}

void Millesimi::print(const ReportContext& context)
{
    StampaMillesimi(context, sezioni(), opzioni());
}

std::vector<TableReport> Millesimi::tables() const
{
    return tabelleScelte(modello(), opzioni());
}

QString Millesimi::printTitle() const
{
    return u"Stampa prospetto dei calcoli"_s;
}

} // namespace zelto::reports
