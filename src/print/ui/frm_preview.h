// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "print/preview_layout.h"
#include "print/ui/print_output.h"

#include <QDialog>

#include <optional>

class QPushButton;

namespace zelto::print {

class PageNavigator;
class PageStrip;
class PageView;
class ZoomBar;

/// The preview "Anteprima di Stampa" of the recorded pages, one at a time. The page files go when
/// it closes.
class frmPreview : public QDialog
{
    Q_OBJECT

public:
    /// The engine holds a recording of at least one page.
    frmPreview(const PrintServices& services, DocumentData document, QWidget* parent = nullptr);
    ~frmPreview() override;

    /// The page shown, counted from 1.
    [[nodiscard]] int page() const { return m_page; }
    [[nodiscard]] double magnification() const { return m_magnification; }

    /// Prints what the user chooses in the print options and closes; without a printer offers the
    /// PDF file. What goes wrong is reported, and the window stays.
    void print();
    void exportPdf();

protected:
    void showEvent(QShowEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;

private:
    void buildBar();
    void buildStrip();
    QPushButton* addButton(const QString& name, const QString& caption,
                           void (frmPreview::*action)());
    void showStrip();
    void connectParts();
    void showPage(int page);
    void turnPage(int pages);

    /// Lays the window out for the magnification and draws the page.
    void layOut(const ScrollPosition& position);
    [[nodiscard]] PreviewLayout PreparePreview();

    /// Another size: by steps, the place of the view staying where it is; of the page on paper; of
    /// the window.
    void zoom(int steps, QPoint place);
    void setScale(double scale);
    void fit();
    bool zoomByKey(const QKeyEvent& event);
    bool moveByKey(const QKeyEvent& event);
    void turnWheel(int stepsX, int stepsY);
    bool reporting(const Drawing& drawing);

    PrintServices m_services;
    DocumentData m_document;
    int m_pageCount;
    int m_page = 0;
    double m_magnification = WholePage;
    std::optional<double> m_scale; ///< the size on paper times this, whatever the window's size
    QString m_fault;               ///< of the page shown, already reported
    QWidget* m_barra;
    PageNavigator* m_navigator;
    ZoomBar* m_zoom;
    PageStrip* m_strip = nullptr;
    PageView* m_view;
};

} // namespace zelto::print
