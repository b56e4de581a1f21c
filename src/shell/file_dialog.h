// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/main_window_services.h"

#include <QFileDialog>
#include <QStringList>

#include <memory>

namespace zelto::shell {

/// The request's filter as the dialog takes it: "Caption (*.EXT)|*.ext" becomes
/// "Caption (*.EXT *.ext)", so that it also matches where patterns heed letter case.
[[nodiscard]] QStringList nameFilters(const QString& filter);

/// A dialog for the request that never asks about overwriting: operations refuse an existing name
/// themselves. fallbackFolder is shown when the request names none, or one that is gone.
[[nodiscard]] std::unique_ptr<QFileDialog> makeFileDialog(QWidget* parent,
                                                          const store::FileDialogRequest& request,
                                                          const QString& fallbackFolder);

} // namespace zelto::shell
