// SPDX-License-Identifier: GPL-3.0-or-later
#include "reports/ui/millesimi.h"

#include "widgets/typed_line.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QRadioButton>

namespace zelto::reports {

Millesimi::Millesimi(const StampaContext& context, QWidget* parent)
    : PrintScreen(u"Millesimi"_s, u"Calcolo millesimi"_s, context, parent),
      m_primaPagina(new widgets::TypedLine(widgets::FieldKind::WholeNumber, 3)),
      m_esteso(new QRadioButton(u"Esteso"_s)), m_compatto(new QRadioButton(u"Compatto"_s))
{
    setContents(buildContents(), sectionWords(), sectionWords(&Section::isUsual));
    m_primaPagina->setFocus();
}

QWidget* Millesimi::buildContents()
{
    m_primaPagina->setText(u"1"_s);
    QHBoxLayout* row = fieldRow(u"Numero prima pagina di stampa"_s, *m_primaPagina, 8);
    row->addStretch(1);
    auto* columns = new QHBoxLayout;
    columns->addWidget(buildSelection(), 1);
    columns->addWidget(buildFormat(), 0, Qt::AlignTop);

    auto* contents = new QWidget;
    auto* layout = new QVBoxLayout(contents);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addLayout(row);
    layout->addLayout(columns);
    return contents;
}

QCheckBox* Millesimi::addBox(QBoxLayout& layout, const QString& caption, int indent)
{
    auto* box = new QCheckBox(caption);
    box->setObjectName(u"TabSel%1"_s.arg(layout.count()));
    auto* row = new QHBoxLayout;
    row->addSpacing(indent);
    row->addWidget(box);
    layout.addLayout(row);
    return box;
}

QWidget* Millesimi::buildSelection()
{
    constexpr int Indent = 24;
    auto* frame = new QGroupBox(u"Sezioni del calcolo"_s);
    auto* layout = new QVBoxLayout(frame);
    m_dettaglio = addBox(*layout, u"Dettaglio U.I."_s);
    m_dettaglio->setChecked(true);
    for (const TableKind& kind : tableKinds()) {
        m_tabelle.push_back(addBox(*layout, kind.caption));
        m_tabelle.back()->setChecked(true);
        if (!kind.hasIndex)
            continue;
        m_indice = addBox(*layout, u"Calc. indice prop. cons."_s, Indent);
        keepPlaceWhenHidden(*m_indice);
        connect(m_tabelle.back(), &QCheckBox::toggled, m_indice, &QWidget::setVisible);
    }
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
    connect(m_dettaglio, &QCheckBox::toggled, frame, &QWidget::setEnabled);
    return frame;
}

OpzioniStampa Millesimi::opzioni() const
{
    QStringList tabelle;
    for (std::size_t i = 0; i < m_tabelle.size(); ++i)
        if (m_tabelle[i]->isChecked())
            tabelle << tableKinds()[i].word;
    const bool hasNumber = !m_primaPagina->text().isEmpty();
    return OpzioniCalcolo{.dettaglio = m_dettaglio->isChecked(),
                          .tabelle = tabelle,
                          .formato = m_esteso->isChecked() ? FormatoDettaglio::Esteso
                                                           : FormatoDettaglio::Compatto,
                          .indice = m_indice->isChecked() ? calc::IndicePiano::Proporzionale
                                                          : calc::IndicePiano::PerConsistenza,
                          .primaPagina = hasNumber ? m_primaPagina->text().toInt() : 1};
}

} // namespace zelto::reports
