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
    : PrintScreen(QStringLiteral("Millesimi"), QStringLiteral("Calcolo millesimi"),
                  {DocumentoCalcolo}, context, parent),
      m_primaPagina(new TypedLine(QStringLiteral("IOL"), 3)),
      m_esteso(new QRadioButton(QStringLiteral("Esteso"))),
      m_compatto(new QRadioButton(QStringLiteral("Compatto")))
{
    setContents(buildContents());
    m_primaPagina->setFocus();
}

QWidget* Millesimi::buildContents()
{
    const QString caption = QStringLiteral("Numero prima pagina di stampa");
    m_primaPagina->setObjectName(QStringLiteral("Dati0"));
    m_primaPagina->setAccessibleName(caption);
    m_primaPagina->setText(QStringLiteral("1"));
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
    const std::array captions{QStringLiteral("Dettaglio U.I."),
                              QStringLiteral("Millesimi generali"), QStringLiteral("Tabelle"),
                              QStringLiteral("Scale"), QStringLiteral("Calc. indice prop. cons.")};
    constexpr int Indent = 24;
    auto* frame = new QGroupBox(QStringLiteral("Sezioni del calcolo"));
    auto* layout = new QVBoxLayout(frame);
    for (std::size_t i = 0; i < m_tabSel.size(); ++i) {
        m_tabSel[i] = new QCheckBox(captions[i]);
        m_tabSel[i]->setObjectName(QStringLiteral("TabSel%1").arg(i));
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
    auto* frame = new QGroupBox(QStringLiteral("Formato dettaglio"));
    auto* layout = new QVBoxLayout(frame);
    m_esteso->setObjectName(QStringLiteral("OpzSta0"));
    m_compatto->setObjectName(QStringLiteral("OpzSta1"));
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
    return QStringLiteral("Stampa prospetto dei calcoli");
}

} // namespace zelto::reports
