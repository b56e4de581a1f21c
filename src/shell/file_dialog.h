// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "widgets/dialogs.h"

#include <QFileDialog>

class QLineEdit;

namespace zelto::shell {

/// The toolkit's dialog, where a typed path counts as it stands, whatever characters it has. The
/// toolkit takes a file that its list has not read yet for a folder, and text in double quotes for
/// several names. Here a name in double quotes is meant without them, unless there is such a file.
/// Nobody is asked about overwriting: operations refuse an existing name themselves.
class FileDialog : public QFileDialog
{
    Q_OBJECT

public:
    /// The fallback folder is shown when the request names none, or one that is gone.
    FileDialog(QWidget* parent, const widgets::FileDialogRequest& request,
               const QString& fallbackFolder);

    /// The file, once the dialog was accepted.
    [[nodiscard]] QString chosen() const { return m_chosen; }

    void accept() override;

protected:
    void showEvent(QShowEvent* event) override;

private:
    /// The file that the text means; empty when that is a folder, or a missing file where one must
    /// exist.
    [[nodiscard]] QString typedFile() const;
    void enableAccepting();

    QLineEdit* m_name;
    QString m_chosen;
};

} // namespace zelto::shell
