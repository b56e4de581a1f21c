// SPDX-License-Identifier: GPL-3.0-or-later
#include "print/ui/frm_preview.h"

#include "print/print_engine.h"
#include "print/ui/page_drawing.h"
#include "print/ui/page_navigator.h"
#include "print/ui/page_strip.h"
#include "print/ui/page_view.h"
#include "print/ui/pdf_pages_dialog.h"
#include "print/ui/zoom_bar.h"
#include "store/settings.h"
#include "widgets/dialogs.h"
#include "widgets/main_window_services.h"

#include <QGuiApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPushButton>

#include <algorithm>
#include <cmath>
#include <utility>

namespace zelto::print {

namespace {

const QString Section = u"Anteprima"_s;
const QString StripKey = u"Miniature"_s;
constexpr double ZoomStep = 1.25;
constexpr double LeastMagnification = 0.5;
constexpr double MostMagnification = 4;

} // namespace

frmPreview::frmPreview(const PrintServices& services, DocumentData document, QWidget* parent)
    : QDialog(parent), m_services(services), m_document(std::move(document)),
      m_pageCount(services.engine.pageCount()), m_barra(new QWidget(this)),
      m_navigator(new PageNavigator(m_pageCount, m_barra)), m_zoom(new ZoomBar(m_barra)),
      m_view(new PageView(this))
{
    setObjectName(u"frmPreview"_s);
    setWindowTitle(u"Anteprima di Stampa"_s);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    setWindowFlag(Qt::WindowMaximizeButtonHint, true);
    m_services.engine.setPageSize(m_services.printers.pageSize());
    buildStrip();
    buildBar();
    auto* pages = new QHBoxLayout;
    pages->addWidget(m_strip);
    pages->addWidget(m_view, 1);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_barra);
    layout->addLayout(pages, 1);
    m_view->setFocusPolicy(Qt::StrongFocus);
    m_view->setFocus();
    connectParts();
    const QSize screenSize = QGuiApplication::primaryScreen()->availableSize();
    resize(screenSize.width() * 3 / 4, screenSize.height() * 9 / 10);
}

frmPreview::~frmPreview()
{
    m_services.engine.setSurface(nullptr);
    m_services.engine.DeletePages();
}

void frmPreview::buildBar()
{
    m_barra->setObjectName(u"Barra"_s);
    auto* layout = new QHBoxLayout(m_barra);
    layout->addWidget(m_navigator);
    layout->addStretch(1);
    layout->addWidget(m_zoom);
    layout->addStretch(1);
    QPushButton* strip = addButton(u"MostraMiniature"_s, u"&Miniature"_s, &frmPreview::showStrip);
    strip->setCheckable(true);
    strip->setChecked(!m_strip->isHidden());
    addButton(u"Stampa"_s, u"&Stampa ..."_s, &frmPreview::print);
    addButton(u"EsportaPDF"_s, u"&Esporta PDF ..."_s, &frmPreview::exportPdf);
    addButton(u"Chiudi"_s, u"&Chiudi"_s, &frmPreview::reject);
}

/// Pages at a glance, each drawn when it comes into view.
void frmPreview::buildStrip()
{
    constexpr int Width = 90;
    const PrintEngine& engine = m_services.engine;
    const QSize size(Width, qRound(Width * engine.PageHeight() / engine.PageWidth()));
    m_strip = new PageStrip(m_pageCount, size, [this, size](int page) {
        return drawPage(m_services.engine, page, size, devicePixelRatio()).picture;
    });
    m_strip->setVisible(m_services.settings.LeggiIni(Section, StripKey) != u"0");
}

/// Or hides it, from now on.
void frmPreview::showStrip()
{
    m_strip->setVisible(m_strip->isHidden());
    m_services.settings.ScriviIni(Section, StripKey, m_strip->isHidden() ? u"0"_s : u"1"_s);
}

QPushButton* frmPreview::addButton(const QString& name, const QString& caption,
                                   void (frmPreview::*action)())
{
    auto* button = new QPushButton(caption, m_barra);
    button->setObjectName(name);
    button->setAutoDefault(false); // Enter was perhaps meant to turn a page
    m_barra->layout()->addWidget(button);
    connect(button, &QPushButton::clicked, this, action);
    return button;
}

void frmPreview::connectParts()
{
    connect(m_navigator, &PageNavigator::pageRequested, this, &frmPreview::showPage);
    connect(m_navigator, &PageNavigator::fieldLeft, m_view, qOverload<>(&QWidget::setFocus));
    connect(m_strip, &PageStrip::pageRequested, this, &frmPreview::showPage);
    connect(m_zoom, &ZoomBar::fitRequested, this, &frmPreview::fit);
    connect(m_zoom, &ZoomBar::scaleRequested, this, &frmPreview::setScale);
    connect(m_view, &PageView::resized, this, [this] {
        if (m_page > 0)
            layOut(m_magnification == WholePage ? ScrollPosition{} : m_view->scrollPosition());
    });
    connect(&m_view->picture(), &PagePicture::clicked, this, [this](QPointF point) {
        const bool enlarge = m_magnification == WholePage;
        m_scale.reset();
        m_magnification = enlarge ? EnlargedPage : WholePage;
        layOut(enlarge ? m_view->pageLayout().centredOn(point) : ScrollPosition{});
    });
    connect(m_view, &PageView::zoomRequested, this, &frmPreview::zoom);
    connect(m_view, &PageView::wheelTurned, this, &frmPreview::turnWheel);
}

void frmPreview::showEvent(QShowEvent* event)
{
    QDialog::showEvent(event);
    if (m_page > 0)
        return;
    const QRect available = screen()->availableGeometry();
    const QSize spare = (available.size() - frameSize()).expandedTo({0, 0}) / 2;
    QWidget::move(available.topLeft() + QPoint{spare.width(), spare.height()});
    showPage(1);
}

void frmPreview::showPage(int page)
{
    if (page < 1 || page > m_pageCount || page == m_page)
        return;
    m_page = page;
    m_navigator->showPage(page);
    m_strip->showPage(page);
    m_fault.clear();
    layOut(m_view->scrollPosition());
}

/// From the top on, where not all of it is seen.
void frmPreview::turnPage(int pages)
{
    const int page = m_page;
    showPage(page + pages);
    const PreviewLayout& layout = m_view->pageLayout();
    if (m_page != page && layout.picture.height() > m_view->viewSize().height())
        m_view->setScrollPosition(layout.atTop(m_view->scrollPosition().x));
}

void frmPreview::layOut(const ScrollPosition& position)
{
    const PreviewLayout layout = PreparePreview();
    const DrawnPage drawn = drawPage(m_services.engine, m_page, layout.picture, devicePixelRatio());
    m_view->showPage(drawn.picture, layout, position);
    m_view->picture().setLens(m_magnification == WholePage);
    m_view->picture().setAccessibleDescription(drawn.fault);
    m_zoom->showScale(layout.scale, m_magnification == WholePage);
    // Once: every change of the window's size draws the page again.
    if (std::exchange(m_fault, drawn.fault) != drawn.fault)
        m_services.dialogs.showMessage(drawn.fault);
}

/// The size and place of the page in the window as it is now.
PreviewLayout frmPreview::PreparePreview()
{
    const PreviewWindow window{.size = {m_view->width(), height()},
                               .barHeight = m_barra->height(),
                               .view = m_view->viewSize(),
                               .dotsPerInch = static_cast<double>(logicalDpiX())};
    const PrintEngine& engine = m_services.engine;
    const PageSize page{engine.PageWidth(), engine.PageHeight()};
    if (m_scale)
        m_magnification = *m_scale / PreviewLayout(window, page, WholePage).scale;
    return {window, page, m_magnification};
}

// Sizes and moves

void frmPreview::zoom(int steps, QPoint place)
{
    double magnification = std::clamp(m_magnification * std::pow(ZoomStep, steps),
                                      LeastMagnification, MostMagnification);
    if (qFuzzyCompare(magnification, WholePage)) // steps back and forth
        magnification = WholePage;
    const PreviewLayout before = m_view->pageLayout();
    const QPointF point = before.pointAt(place, m_view->scrollPosition());
    const double growth = magnification / m_magnification;
    m_magnification = magnification;
    m_scale.reset();
    const QPointF middle = point * growth - (place - before.middle());
    layOut({});
    m_view->setScrollPosition(m_view->pageLayout().centredOn(middle));
}

void frmPreview::setScale(double scale)
{
    m_scale = scale;
    layOut(m_view->scrollPosition());
}

void frmPreview::fit()
{
    m_scale.reset();
    m_magnification = WholePage;
    layOut({});
}

void frmPreview::turnWheel(int stepsX, int stepsY)
{
    const QSize picture = m_view->pageLayout().picture;
    if (picture.boundedTo(m_view->viewSize()) != picture)
        m_view->scrollBy(stepsX, stepsY);
    else
        showPage(m_page + stepsY);
}

bool frmPreview::zoomByKey(const QKeyEvent& event)
{
    const int key = event.key();
    if (!event.modifiers().testFlag(Qt::ControlModifier))
        return false;
    if (key == Qt::Key_Plus || key == Qt::Key_Equal)
        zoom(1, m_view->pageLayout().middle());
    else if (key == Qt::Key_Minus)
        zoom(-1, m_view->pageLayout().middle());
    else if (key == Qt::Key_0)
        fit();
    else
        return false;
    return true;
}

bool frmPreview::moveByKey(const QKeyEvent& event)
{
    const int key = event.key();
    if (key == Qt::Key_Home)
        showPage(1);
    else if (key == Qt::Key_End)
        showPage(m_pageCount);
    else if (key == Qt::Key_Left || key == Qt::Key_Right)
        m_view->scrollBy(key == Qt::Key_Left ? -1 : 1, 0);
    else if (key == Qt::Key_Up || key == Qt::Key_Down)
        m_view->scrollBy(0, key == Qt::Key_Up ? -1 : 1);
    else
        return false;
    return true;
}

void frmPreview::keyPressEvent(QKeyEvent* event)
{
    if (zoomByKey(*event) || moveByKey(*event))
        return;
    const bool enters = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (auto* button = qobject_cast<QAbstractButton*>(focusWidget()); enters && button != nullptr)
        return button->click();
    const QString typed = event->text();
    if (typed.size() == 1 && typed.front().isDigit())
        m_navigator->typeNumber(typed);
    else
        QDialog::keyPressEvent(event);
}

/// On release, as the pages of a document have always been turned here.
void frmPreview::keyReleaseEvent(QKeyEvent* event)
{
    const bool shifted = event->modifiers().testFlag(Qt::ShiftModifier);
    if (event->key() == Qt::Key_PageUp && !shifted)
        turnPage(-1);
    else if (event->key() == Qt::Key_PageDown && !shifted)
        turnPage(1);
    else
        QDialog::keyReleaseEvent(event);
}

// Paper and files

void frmPreview::print()
{
    if (!PrinterDesk::isInstalled()) {
        if (offersPdfInstead(m_services.dialogs))
            exportPdf();
        return;
    }
    const auto pages = m_services.dialogs.choosePages(m_services.printers.printer(), m_pageCount);
    const bool printed = pages && reporting([&] {
                             drawOnPrinter(m_services, m_document.printTitle, [&] {
                                 m_services.engine.PrintDocument(pages->first, pages->last);
                             });
                         });
    if (printed)
        accept();
}

void frmPreview::exportPdf()
{
    PdfPagesDialog dialog(m_pageCount, m_page, this);
    if (m_pageCount > 1 && dialog.exec() != QDialog::Accepted)
        return;
    const QString path = choosePdfPath(m_services.dialogs, m_document.pdfPath);
    if (path.isEmpty())
        return;
    const widgets::PageRange pages = dialog.pages();
    const bool written = reporting([&] {
        drawIntoPdf(m_services, path, m_document.info,
                    [&] { m_services.engine.PrintDocument(pages.first, pages.last); });
    });
    if (written)
        tellWritten(m_services.dialogs, path);
}

/// Draws with the hourglass; what goes wrong is reported and gives false.
bool frmPreview::reporting(const Drawing& drawing)
{
    try {
        const widgets::StatusScope busy(m_services.window, u"Stampa"_s);
        drawing();
        return true;
    } catch (const std::exception& error) {
        m_services.dialogs.ReportError(error);
        return false;
    }
}

} // namespace zelto::print
