// SPDX-License-Identifier: GPL-3.0-or-later
#include "print/ui/page_view.h"

#include "text/literals.h"
#include "widgets/icons.h"

#include <QGridLayout>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QWheelEvent>

namespace zelto::print {

namespace {

QCursor lens(const QString& name)
{
    constexpr int Size = 24;
    constexpr QPoint Centre(10, 10);
    return QCursor(widgets::icon(name).pixmap(Size), Centre.x(), Centre.y());
}

} // namespace

PagePicture::PagePicture(QWidget* parent)
    : QWidget(parent), m_enlarging(lens(u"lente_piu"_s)), m_reducing(lens(u"lente_meno"_s))
{
    setObjectName(u"Pic"_s);
    setAccessibleName(u"Pagina"_s);
    setAttribute(Qt::WA_OpaquePaintEvent);
}

void PagePicture::setImage(const QImage& image)
{
    m_image = image;
    resize(image.deviceIndependentSize().toSize());
    update();
}

void PagePicture::mousePressEvent(QMouseEvent* event)
{
    event->setAccepted(event->button() == Qt::LeftButton);
}

void PagePicture::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton && rect().contains(event->position().toPoint()))
        emit clicked(event->position());
}

void PagePicture::paintEvent(QPaintEvent* event)
{
    QPainter painter(this);
    painter.setClipRegion(event->region());
    painter.drawImage(0, 0, m_image);
}

PageView::PageView(QWidget* parent)
    : QWidget(parent), m_area(new QWidget(this)), m_picture(new PagePicture(m_area)),
      m_horizontal(addScrollBar(u"HScroll1"_s, Qt::Horizontal)),
      m_vertical(addScrollBar(u"VScroll1"_s, Qt::Vertical))
{
    setAccessibleName(u"Vista della pagina"_s);
    m_area->setBackgroundRole(QPalette::Dark);
    m_area->setAutoFillBackground(true);
    m_area->installEventFilter(this);
    auto* layout = new QGridLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_area, 0, 0);
    layout->addWidget(m_vertical, 0, 1);
    layout->addWidget(m_horizontal, 1, 0);
    layout->setRowStretch(0, 1);
    layout->setColumnStretch(0, 1);
}

QScrollBar* PageView::addScrollBar(const QString& name, Qt::Orientation orientation)
{
    constexpr int Step = ScrollPosition::Maximum / 20;
    auto* bar = new QScrollBar(orientation, this);
    bar->setObjectName(name);
    bar->setAccessibleName(orientation == Qt::Horizontal ? u"Scorrimento orizzontale"_s
                                                         : u"Scorrimento verticale"_s);
    bar->setRange(0, ScrollPosition::Maximum);
    bar->setSingleStep(Step);
    bar->setPageStep(Step * 4);
    bar->setValue(ScrollPosition::Maximum / 2);
    connect(bar, &QScrollBar::valueChanged, this, &PageView::movePicture);
    return bar;
}

void PageView::showPage(const QImage& image, const PreviewLayout& layout,
                        const ScrollPosition& position)
{
    m_layout = layout;
    m_picture->setImage(image);
    setScrollPosition(position);
}

ScrollPosition PageView::scrollPosition() const
{
    return {.x = m_horizontal->value(), .y = m_vertical->value()};
}

void PageView::setScrollPosition(const ScrollPosition& position)
{
    const QSignalBlocker quietHorizontal(m_horizontal);
    const QSignalBlocker quietVertical(m_vertical);
    m_horizontal->setValue(position.x);
    m_vertical->setValue(position.y);
    movePicture();
}

void PageView::scrollBy(int stepsX, int stepsY)
{
    m_horizontal->setValue(m_horizontal->value() + stepsX * m_horizontal->singleStep());
    m_vertical->setValue(m_vertical->value() + stepsY * m_vertical->singleStep());
}

void PageView::movePicture()
{
    m_picture->move(m_layout.place(scrollPosition()));
}

bool PageView::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Resize)
        emit resized();
    if (event->type() == QEvent::Wheel) {
        turnWheel(*static_cast<QWheelEvent*>(event));
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

void PageView::turnWheel(const QWheelEvent& event)
{
    constexpr int Notch = QWheelEvent::DefaultDeltasPerStep;
    m_pendingWheel += event.angleDelta();
    const QPoint notches{m_pendingWheel.x() / Notch, m_pendingWheel.y() / Notch};
    if (notches.isNull())
        return;
    m_pendingWheel -= notches * Notch;
    if (event.modifiers().testFlag(Qt::ControlModifier))
        emit zoomRequested(notches.y(), event.position().toPoint());
    else
        emit wheelTurned(-notches.x(), -notches.y());
}

} // namespace zelto::print
