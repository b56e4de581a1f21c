// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/file_dialog.h"

#include <QDir>
#include <QFileIconProvider>
#include <QFileInfo>

namespace zelto::shell {

using store::FileDialogRequest;

namespace {

/// Qt's translation leaves these words in English.
class ItalianTypes : public QFileIconProvider
{
public:
    [[nodiscard]] QString type(const QFileInfo& file) const override
    {
        if (file.isDir())
            return QStringLiteral("Cartella");
        return QStringLiteral("File %1").arg(file.suffix().toUpper()).trimmed();
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

} // namespace

QStringList nameFilters(const QString& filter)
{
    const QStringList parts = filter.split(u'|');
    QStringList filters;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        const QString caption = parts[i].left(parts[i].indexOf(u'(')).trimmed();
        const QString& pattern = parts[i + 1];
        filters << QStringLiteral("%1 (%2 %3)").arg(caption, pattern.toUpper(), pattern.toLower());
    }
    return filters;
}

std::unique_ptr<QFileDialog> makeFileDialog(QWidget* parent, const FileDialogRequest& request,
                                            const QString& fallbackFolder)
{
    const bool mustExist =
        (request.flags & FileDialogRequest::FileMustExist) == FileDialogRequest::FileMustExist;
    const bool saves = request.kind == FileDialogRequest::Kind::Save && !mustExist;
    const QString folder = existing({request.initialFolder, fallbackFolder});
    auto dialog = std::make_unique<QFileDialog>(parent, request.title, folder);
    static ItalianTypes types;
    dialog->setIconProvider(&types);
    dialog->setOption(QFileDialog::DontConfirmOverwrite);
    dialog->setAcceptMode(saves ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    dialog->setFileMode(mustExist ? QFileDialog::ExistingFile : QFileDialog::AnyFile);
    dialog->setNameFilters(nameFilters(request.filter));
    dialog->selectFile(request.defaultName);
    dialog->setLabelText(QFileDialog::Accept,
                         saves ? QStringLiteral("Salva") : QStringLiteral("Seleziona"));
    dialog->setLabelText(QFileDialog::Reject, QStringLiteral("Annulla"));
    return dialog;
}

} // namespace zelto::shell
