// SPDX-License-Identifier: GPL-3.0-or-later
#include "reports/ui/riparto.h"

#include "widgets/keep_room.h"
#include "widgets/typed_line.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QRadioButton>

namespace zelto::reports {

using widgets::TypedLine;

Riparto::Riparto(const StampaContext& context, QWidget* parent)
    : PrintScreen(QStringLiteral("Riparto"), QStringLiteral("Riparto importo"),
                  {DocumentoRiparto, QStringLiteral(" - riparto")}, context, parent),
      m_importo(new TypedLine(QStringLiteral("EOL"), 12)),
      m_indice(new QCheckBox(QStringLiteral("Calc. indice proporz. alla consist."))),
      m_quadratura(new QCheckBox(QStringLiteral("Quadratura al centesimo")))
{
    setContents(buildContents());
    setSezioni({.primaPagina = false, .relazione = false, .calcolo = true});
    fillLists();
    for (QRadioButton* option : m_tabSel)
        connect(option, &QRadioButton::toggled, this, &Riparto::TabSel_Click);
    m_tabSel[Generali]->setChecked(true);
    m_importo->setFocus();
}

QWidget* Riparto::buildContents()
{
    const QString caption = QStringLiteral("Importo da ripartire");
    m_importo->setObjectName(QStringLiteral("Dati0"));
    m_importo->setAccessibleName(caption);
    m_importo->setAlignment(Qt::AlignRight);
    m_importo->setMaximumWidth(m_importo->fontMetrics().horizontalAdvance(u'0') * 16);
    auto* label = new QLabel(caption);
    label->setBuddy(m_importo);
    m_quadratura->setObjectName(QStringLiteral("Quadratura"));
    m_quadratura->setToolTip(
        QStringLiteral("Le quote sommano esattamente all'importo: i centesimi che mancano vanno "
                       "ai resti maggiori"));

    auto* contents = new QWidget;
    auto* layout = new QGridLayout(contents);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(label, 0, 0);
    layout->addWidget(m_importo, 0, 1);
    layout->addWidget(m_quadratura, 0, 2);
    layout->addWidget(buildShares(), 1, 0, 1, 4);
    layout->setColumnStretch(3, 1);
    return contents;
}

QWidget* Riparto::buildShares()
{
    auto* frame = new QGroupBox(QStringLiteral("Millesimi"));
    auto* layout = new QGridLayout(frame);
    addOption(*layout, Generali, QStringLiteral("Millesimi generali"));
    addOption(*layout, Specifica, QStringLiteral("Tabella specifica"));
    addOption(*layout, Scala, QStringLiteral("Millesimi scala"));
    m_tabella =
        addList(*layout, Specifica, QStringLiteral("Tabella"), QStringLiteral("Tabella specifica"));
    m_scala = addList(*layout, Scala, QStringLiteral("Scala"), QStringLiteral("Scala"));
    m_indice->setObjectName(QStringLiteral("Sezione3"));
    widgets::keepRoomWhenHidden(*m_indice);
    layout->addWidget(m_indice, Scala + 1, 1);
    layout->setColumnStretch(1, 1);
    return frame;
}

void Riparto::addOption(QGridLayout& layout, Tab tab, const QString& caption)
{
    auto* option = new QRadioButton(caption);
    option->setObjectName(QStringLiteral("TabSel%1").arg(static_cast<int>(tab)));
    widgets::keepRoomWhenHidden(*option);
    layout.addWidget(option, tab, 0);
    m_tabSel[tab] = option;
}

QComboBox* Riparto::addList(QGridLayout& layout, Tab tab, const QString& name,
                            const QString& caption)
{
    auto* list = new QComboBox;
    list->setObjectName(name);
    list->setAccessibleName(caption);
    widgets::keepRoomWhenHidden(*list);
    layout.addWidget(list, tab, 1);
    return list;
}

void Riparto::fillLists()
{
    for (const QString& name : modello().NomeTabella)
        m_tabella->addItem(name);
    for (const QString& code : calc::elencoScale(modello()))
        m_scala->addItem(code);
    m_tabSel[Specifica]->setVisible(m_tabella->count() > 0);
    m_tabSel[Scala]->setVisible(m_scala->count() > 0);
}

void Riparto::TabSel_Click()
{
    m_tabella->setVisible(m_tabSel[Specifica]->isChecked());
    m_scala->setVisible(m_tabSel[Scala]->isChecked());
    m_indice->setVisible(m_tabSel[Scala]->isChecked());
}

OpzioniRiparto Riparto::opzioni() const
{
    OpzioniRiparto opzioni{.importo = m_importo->text(),
                           .quote = MillesimiGenerali{},
                           .arrotondamento = m_quadratura->isChecked()
                                                 ? calc::Arrotondamento::AQuadratura
                                                 : calc::Arrotondamento::PerQuota};
    if (m_tabSel[Specifica]->isChecked())
        opzioni.quote = TabellaSpecifica{m_tabella->currentIndex() + 1};
    if (m_tabSel[Scala]->isChecked())
        opzioni.quote =
            MillesimiScala{.codice = m_scala->currentText(),
                           .indice = m_indice->isChecked() ? calc::IndicePiano::Proporzionale
                                                           : calc::IndicePiano::PerConsistenza};
    return opzioni;
}

void Riparto::print(const ReportContext& context)
{
    StampaRiparto(context, sezioni(), opzioni());
}

std::vector<TableReport> Riparto::tables() const
{
    return tabelleScelte(modello(), opzioni());
}

QString Riparto::printTitle() const
{
    return QStringLiteral("Stampa riparto importo");
}

} // namespace zelto::reports
