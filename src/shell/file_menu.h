// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QMenu>

#include <map>

namespace zelto::shell {

class RecentJobs;

/// Indexes of the entries of the File menu; the recent jobs are 13 to 16.
enum class FileEntry : int {
    Nuovo = 3,
    Apri = 4,
    Duplica = 5,
    Elimina = 6,
    Compattamento = 8,
    Riparazione = 9,
    ImpostaStampante = 11,
    SeparatoreRecenti = 12,
    PrimoRecente = 13,
    UltimoRecente = 16,
    Uscita = 18,
    RipristinaCopia = 19, ///< stands behind Riparazione
};

/// The menu "&File", whose entries go by their index.
class FileMenu : public QMenu
{
    Q_OBJECT

public:
    explicit FileMenu(QWidget* parent = nullptr);

    /// The entry of an index from 3 to 19, separators included.
    [[nodiscard]] QAction& VoceFile(int index) { return *m_entries.at(index); }

    /// Shows the recent jobs that there are.
    void showRecentJobs(const shell::RecentJobs& jobs);

signals:
    /// The user chose the entry.
    void chosen(int index);

private:
    void addEntry(FileEntry entry, const QString& caption, const QString& hint,
                  const QString& iconName = {}, const QString& shortcut = {});
    void addDash(int index);
    void addRecentEntries();
    void addAt(int index, QAction* action);

    std::map<int, QAction*> m_entries;
};

} // namespace zelto::shell
