// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

class QLineEdit;
class QTextBrowser;
class QTreeWidget;
class QUrl;

namespace zelto::shell {

/// The user's guide, with its chapters beside it and a search. It stays open beside the screen that
/// it was asked for from.
class GuideWindow : public QWidget
{
    Q_OBJECT

public:
    /// Belongs to the parent's window, and is not kept from being used by it when that is modal.
    explicit GuideWindow(QWidget* parent);

    /// Turns to the chapter or section of this heading, to the beginning when there is none.
    void showChapter(const QString& heading);

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void buildSearch();
    void listChapters();
    void follow(const QUrl& link);
    void goTo(int position);
    void search();

    QTextBrowser* m_text;
    QTreeWidget* m_chapters;
    QLineEdit* m_search;
};

} // namespace zelto::shell
