// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/file_dialog.h"

#include "store/files/file_names.h"

#include <QDialogButtonBox>
#include <QDir>
#include <QFileIconProvider>
#include <QFileInfo>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeView>

namespace zelto::shell {

using widgets::FileDialogRequest;

namespace {

/// Qt's translation leaves these words in English.
class ItalianTypes : public QFileIconProvider
{
public:
    [[nodiscard]] QString type(const QFileInfo& file) const override
    {
        if (file.isDir())
            return u"Cartella"_s;
        return u"File %1"_s.arg(file.suffix().toUpper()).trimmed();
    }
};

/// The first folder that exists: a dialog would take another for a file's name.
QString existing(const QStringList& folders)
{
    for (const QString& folder : folders)
        if (QFileInfo(folder).isDir())
            return folder;
    return QDir::homePath();
}

/// The request's filter as the dialog takes it: "Caption (*.EXT)|*.ext" becomes
/// "Caption (*.EXT *.ext)", so that it also matches where patterns heed letter case.
QStringList bothCases(const QString& filter)
{
    const QStringList parts = filter.split(u'|');
    QStringList filters;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        const QString caption = parts[i].left(parts[i].indexOf(u'(')).trimmed();
        const QString& pattern = parts[i + 1];
        filters << u"%1 (%2 %3)"_s.arg(caption, pattern.toUpper(), pattern.toLower());
    }
    return filters;
}

QString withoutQuotes(const QString& text)
{
    constexpr QChar Quote(0x22);
    const bool quoted = text.size() > 2 && text.startsWith(Quote) && text.endsWith(Quote);
    return quoted ? text.sliced(1, text.size() - 2) : text;
}

QString withHome(const QString& text)
{
    return text.startsWith(u"~/"_s) ? QDir::homePath() + text.sliced(1) : text;
}

} // namespace

FileDialog::FileDialog(QWidget* parent, const FileDialogRequest& request,
                       const QString& fallbackFolder)
    : QFileDialog(parent, request.title, existing({request.initialFolder, fallbackFolder}))
{
    constexpr QSize FirstSize(860, 520);
    const bool mustExist =
        (request.flags & FileDialogRequest::FileMustExist) == FileDialogRequest::FileMustExist;
    const bool saves = request.kind == FileDialogRequest::Kind::Save && !mustExist;
    setOption(DontUseNativeDialog); // its parts are used below
    static ItalianTypes types;
    setIconProvider(&types);
    setOption(DontConfirmOverwrite);
    setAcceptMode(saves ? AcceptSave : AcceptOpen);
    setFileMode(mustExist ? ExistingFile : AnyFile);
    setNameFilters(bothCases(request.filter));
    selectFile(request.defaultName);
    setLabelText(Accept, saves ? u"Salva"_s : u"Seleziona"_s);
    setLabelText(Reject, u"Annulla"_s);
    resize(FirstSize);
    m_name = findChild<QLineEdit*>(u"fileNameEdit"_s);
    connect(m_name, &QLineEdit::textChanged, this, &FileDialog::enableAccepting);
}

void FileDialog::accept()
{
    m_chosen = typedFile();
    if (!m_chosen.isEmpty()) {
        QDialog::accept();
        return;
    }
    QFileDialog::accept(); // enters a folder, or says what is wrong
    if (result() == Accepted)
        m_chosen = selectedFiles().value(0);
}

QString FileDialog::typedFile() const
{
    const QString text = m_name->text();
    for (const QString& name : {text, withoutQuotes(text)}) {
        QString path = directory().absoluteFilePath(withHome(name));
        if (fileMode() == ExistingFile)
            path = store::findFile(path);
        if (!name.isEmpty() && QFileInfo::exists(path))
            return QFileInfo(path).isDir() ? QString() : path;
    }
    const QString path = directory().absoluteFilePath(withHome(withoutQuotes(text)));
    const bool isNew = fileMode() == AnyFile && !text.isEmpty() && !path.endsWith(u'/') &&
                       QFileInfo(QFileInfo(path).absolutePath()).isDir();
    return isNew ? QDir::cleanPath(path) : QString();
}

/// The toolkit takes what is between double quotes for several names.
void FileDialog::enableAccepting()
{
    if (typedFile().isEmpty())
        return;
    const auto* const buttons = findChild<QDialogButtonBox*>();
    for (QAbstractButton* button : buttons->buttons())
        if (buttons->buttonRole(button) == QDialogButtonBox::AcceptRole)
            button->setEnabled(true);
}

/// Size, kind and date as wide as they are, the name what remains.
void FileDialog::showEvent(QShowEvent* event)
{
    constexpr int RowsLookedAt = 200;
    auto* const header = findChild<QTreeView*>(u"treeView"_s)->header();
    header->setStretchLastSection(false);
    header->setResizeContentsPrecision(RowsLookedAt);
    header->setSectionResizeMode(QHeaderView::ResizeToContents);
    header->setSectionResizeMode(0, QHeaderView::Stretch);
    QFileDialog::showEvent(event);
}

} // namespace zelto::shell
