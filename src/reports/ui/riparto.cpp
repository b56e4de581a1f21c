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
    : PrintScreen(u"Riparto"_s, u"Riparto importo"_s, {DocumentoRiparto, u" - riparto"_s}, context,
                  parent),
      m_importo(new TypedLine(u"EOL"_s, 12)),
      m_indice(new QCheckBox(u"Calc. indice proporz. alla consist."_s)),
      m_quadratura(new QCheckBox(u"Quadratura al centesimo"_s))
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
    const QString caption = u"Importo da ripartire"_s;
    m_importo->setObjectName(u"Dati0"_s);
    m_importo->setAccessibleName(caption);
    m_importo->setAlignment(Qt::AlignRight);
    m_importo->setMaximumWidth(m_importo->fontMetrics().horizontalAdvance(u'0') * 16);
    auto* label = new QLabel(caption);
    label->setBuddy(m_importo);
    m_quadratura->setObjectName(u"Quadratura"_s);
    m_quadratura->setToolTip(
        u"Le quote sommano esattamente all'importo: i centesimi che mancano vanno "
        u"ai resti maggiori"_s);

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
    auto* frame = new QGroupBox(u"Millesimi"_s);
    auto* layout = new QGridLayout(frame);
    addOption(*layout, Generali, u"Millesimi generali"_s);
    addOption(*layout, Specifica, u"Tabella specifica"_s);
    addOption(*layout, Scala, u"Millesimi scala"_s);
    m_tabella = addList(*layout, Specifica, u"Tabella"_s, u"Tabella specifica"_s);
    m_scala = addList(*layout, Scala, u"Scala"_s, u"Scala"_s);
    m_indice->setObjectName(u"Sezione3"_s);
    widgets::keepRoomWhenHidden(*m_indice);
    layout->addWidget(m_indice, Scala + 1, 1);
    layout->setColumnStretch(1, 1);
    return frame;
}

void Riparto::addOption(QGridLayout& layout, Tab tab, const QString& caption)
{
    auto* option = new QRadioButton(caption);
    option->setObjectName(u"TabSel%1"_s.arg(static_cast<int>(tab)));
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
    return u"Stampa riparto importo"_s;
}

} // namespace zelto::reports
