// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/qt_dialogs.h"

#include "shell/copy_dialog.h"
#include "shell/file_dialog.h"
#include "text/error.h"
#include "widgets/icons.h"
#include "widgets/keys.h"

#include <QApplication>
#include <QDesktopServices>
#include <QDialogButtonBox>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMainWindow>
#include <QMessageBox>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>
#include <QStandardPaths>
#include <QUrl>

#include <SQLiteCpp/Database.h>
#include <algorithm>
#include <new>

namespace zelto::shell {

namespace {

/// The modal screen, if there is one, or else the main window.
QWidget* frontWindow()
{
    if (QWidget* modal = QApplication::activeModalWidget())
        return modal;
    for (QWidget* window : QApplication::topLevelWidgets())
        if (window->isVisible() && qobject_cast<QMainWindow*>(window) != nullptr)
            return window;
    return nullptr;
}

QMessageBox::StandardButton ask(QMessageBox::Icon icon, const QString& text,
                                QMessageBox::StandardButtons buttons,
                                QMessageBox::StandardButton byReturn = QMessageBox::NoButton)
{
    QMessageBox box(icon, u"Zelto"_s, text, buttons, frontWindow());
    box.setTextFormat(Qt::PlainText);
    if (auto* yes = box.button(QMessageBox::Yes))
        yes->setText(u"&Sì"_s);
    box.setDefaultButton(byReturn);
    return static_cast<QMessageBox::StandardButton>(box.exec());
}

/// The dialog's button of the role, nullptr for none.
QAbstractButton* findButton(const QPrintDialog& dialog, QDialogButtonBox::ButtonRole role)
{
    if (const auto* buttons = dialog.findChild<QDialogButtonBox*>())
        for (QAbstractButton* button : buttons->buttons())
            if (buttons->buttonRole(button) == role)
                return button;
    return nullptr;
}

/// Whether it was accepted, with the button of the caption.
bool show(QPrintDialog& dialog, const QString& title, const QString& acceptCaption)
{
    dialog.setWindowTitle(title);
    if (QAbstractButton* accept = findButton(dialog, QDialogButtonBox::AcceptRole))
        accept->setText(acceptCaption);
    return dialog.exec() == QDialog::Accepted;
}

/// Shows at once what there is to choose, copies and pages, and leaves out lists of pages: the
/// printer would pick them from the range that we have already picked.
void openOptions(const QPrintDialog& dialog)
{
    if (QAbstractButton* more = findButton(dialog, QDialogButtonBox::ResetRole))
        more->click();
    for (const QString& name : {u"pagesRadioButton"_s, u"pagesLineEdit"_s})
        if (auto* list = dialog.findChild<QWidget*>(name))
            list->hide();
}

/// Where it cannot be made, Qt 6.4 takes the working folder for the trash, and says it succeeded.
bool hasHomeTrash()
{
    const QDir data(QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation));
    const QStringList parts{u"Trash/files"_s, u"Trash/info"_s};
    return std::all_of(parts.begin(), parts.end(), [&](const QString& part) {
        return data.mkpath(part) && QFileInfo(data.filePath(part)).isWritable();
    });
}

/// Name, version, licence and libraries of the program, as rich text.
QString aboutText()
{
    return u"<h3>Zelto %1</h3>"
           u"<p>Tabelle millesimali dei condomìni.</p>"
           u"<p>Software libero: può essere usato, studiato, modificato e ridistribuito secondo "
           u"la <a href=\"https://www.gnu.org/licenses/gpl-3.0.html\">GNU General Public "
           u"License</a>, versione 3 o successiva. È distribuito senza alcuna garanzia.</p>"
           u"<p>Librerie: Qt %2 (LGPL-3.0), SQLite %3 (pubblico dominio), SQLiteCpp (MIT), "
           u"SimpleIni (MIT).</p>"_s.arg(QStringLiteral(ZELTO_VERSION),
                                         QString::fromLatin1(qVersion()),
                                         QString::fromLatin1(SQLite::getLibVersion()));
}

/// Errors that carry no number have 0, want of memory 7.
QString errorReportText(const std::exception& error)
{
    constexpr int OutOfMemory = 7;
    QString description = QString::fromUtf8(error.what());
    int number = 0;
    if (const auto* known = dynamic_cast<const text::Error*>(&error)) {
        number = known->code();
    } else if (dynamic_cast<const std::bad_alloc*>(&error) != nullptr) {
        description = u"Memoria esaurita"_s;
        number = OutOfMemory;
    }
    return u"The following Error occurred:\n\n%1\nNumber: %2"_s.arg(description,
                                                                    QString::number(number));
}

class QtDialogs : public widgets::Dialogs
{
public:
    QString ShowFileDialog(const widgets::FileDialogRequest& request) override
    {
        if (m_lastFolder.isEmpty())
            m_lastFolder = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
        FileDialog dialog(frontWindow(), request, m_lastFolder);
        if (dialog.exec() != QDialog::Accepted || dialog.chosen().isEmpty())
            return {};
        QString path = dialog.chosen();
        m_lastFolder = QFileInfo(path).absolutePath();
        return path;
    }

    std::optional<store::JobCopy> chooseCopy(const store::JobCopies& copies,
                                             const QString& job) override
    {
        CopyDialog dialog(copies, job, frontWindow());
        return dialog.exec() == QDialog::Accepted ? dialog.chosen() : std::nullopt;
    }

    bool offerConversion(const QString& text) override
    {
        QMessageBox box(QMessageBox::Information, u"Zelto"_s, text, QMessageBox::Ok, frontWindow());
        box.setTextFormat(Qt::PlainText);
        const QPushButton* convert = box.addButton(u"&Converti ..."_s, QMessageBox::ActionRole);
        box.setEscapeButton(QMessageBox::Ok);
        box.exec();
        return box.clickedButton() == convert;
    }

    bool askYesNo(const QString& question) override
    {
        return ask(QMessageBox::Question, question, QMessageBox::Yes | QMessageBox::No,
                   QMessageBox::Yes) == QMessageBox::Yes;
    }

    bool confirmLoss(const QString& question) override
    {
        return ask(QMessageBox::Warning, question, QMessageBox::Yes | QMessageBox::No,
                   QMessageBox::No) == QMessageBox::Yes;
    }

    std::optional<int> choose(const QString& question, const QStringList& choices) override
    {
        QMessageBox box(QMessageBox::Question, u"Zelto"_s, question, QMessageBox::NoButton,
                        frontWindow());
        box.setTextFormat(Qt::PlainText);
        QList<QAbstractButton*> buttons;
        for (const QString& choice : choices) {
            auto* button = box.addButton(choice, QMessageBox::AcceptRole);
            if (buttons.isEmpty())
                box.setDefaultButton(button);
            buttons << button;
        }
        box.setEscapeButton(box.addButton(u"A&nnulla"_s, QMessageBox::RejectRole));
        box.exec();
        const auto chosen = static_cast<int>(buttons.indexOf(box.clickedButton()));
        return chosen < 0 ? std::nullopt : std::optional(chosen);
    }

    bool moveToTrash(const QString& path) override
    {
        return hasHomeTrash() && QFile::moveToTrash(path);
    }

    void showMessage(const QString& text) override
    {
        ask(QMessageBox::Information, text, QMessageBox::Ok);
    }

    void showError(const QString& text) override
    {
        ask(QMessageBox::Critical, text, QMessageBox::Ok);
    }

    void ReportError(const std::exception& error) override
    {
        QApplication::beep();
        showError(errorReportText(error));
    }

    void showAbout() override
    {
        QMessageBox box(QMessageBox::NoIcon, u"Informazioni su Zelto"_s, aboutText(),
                        QMessageBox::Ok, frontWindow());
        box.setIconPixmap(widgets::icon(u"zelto"_s).pixmap(64));
        box.exec();
    }

    void showWritten(const QString& text, const QString& path) override
    {
        QMessageBox box(QMessageBox::Information, u"Zelto"_s, text, QMessageBox::Ok, frontWindow());
        box.setTextFormat(Qt::PlainText);
        box.setDefaultButton(QMessageBox::Ok);
        auto* open = box.addButton(u"&Apri"_s, QMessageBox::ActionRole);
        auto* openFolder = box.addButton(u"Apri &cartella"_s, QMessageBox::ActionRole);
        box.setEscapeButton(QMessageBox::Ok);
        box.exec();
        const QString opened = box.clickedButton() == open         ? path
                               : box.clickedButton() == openFolder ? QFileInfo(path).absolutePath()
                                                                   : QString();
        if (!opened.isEmpty() && !QDesktopServices::openUrl(QUrl::fromLocalFile(opened)))
            showMessage(u"Nessun programma apre «%1»."_s.arg(opened));
    }

    void setUpPrinter(QPrinter& printer) override
    {
        QPrintDialog dialog(&printer, frontWindow());
        dialog.setOptions(QAbstractPrintDialog::PrintCollateCopies |
                          QAbstractPrintDialog::PrintShowPageSize);
        show(dialog, u"Imposta stampante"_s, u"OK"_s);
    }

    std::optional<widgets::PageRange> choosePages(QPrinter& printer, int pageCount) override
    {
        QPrintDialog dialog(&printer, frontWindow());
        dialog.setOptions(QAbstractPrintDialog::PrintPageRange |
                          QAbstractPrintDialog::PrintCollateCopies |
                          QAbstractPrintDialog::PrintShowPageSize);
        dialog.setMinMax(1, pageCount);
        dialog.setFromTo(1, pageCount);
        dialog.setPrintRange(QAbstractPrintDialog::AllPages);
        openOptions(dialog);
        if (!show(dialog, u"Opzioni di stampa"_s, u"Stampa"_s))
            return std::nullopt;
        const bool isRange = dialog.printRange() == QAbstractPrintDialog::PageRange;
        // The pages are chosen here: the printer gets no others.
        const widgets::PageRange all{.first = 1, .last = pageCount};
        const widgets::PageRange chosen{.first = std::max(1, dialog.fromPage()),
                                        .last = std::min(pageCount, dialog.toPage())};
        printer.setPrintRange(QPrinter::AllPages);
        printer.setFromTo(0, 0);
        return isRange ? chosen : all;
    }

private:
    QString m_lastFolder; ///< where the user last chose a file
};

} // namespace

std::unique_ptr<widgets::Dialogs> makeDialogs()
{
    return std::make_unique<QtDialogs>();
}

} // namespace zelto::shell
