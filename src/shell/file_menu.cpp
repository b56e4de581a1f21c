// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/file_menu.h"

#include "shell/icons.h"
#include "store/recent_jobs.h"

#include <QKeySequence>

namespace zelto::shell {

namespace {

constexpr int First = static_cast<int>(FileEntry::PrimoRecente);
constexpr int Last = static_cast<int>(FileEntry::UltimoRecente);

} // namespace

FileMenu::FileMenu(QWidget* parent) : QMenu(QStringLiteral("&File"), parent)
{
    setObjectName(QStringLiteral("MenuFile"));
    addEntry(FileEntry::Nuovo, QStringLiteral("&Nuovo ..."),
             QStringLiteral("Crea un nuovo lavoro e lo apre"), QStringLiteral("nuovo"),
             QStringLiteral("Ctrl+N"));
    addEntry(FileEntry::Apri, QStringLiteral("&Apri ..."), QStringLiteral("Apre un lavoro"),
             QStringLiteral("apri"), QStringLiteral("Ctrl+O"));
    addEntry(FileEntry::Duplica, QStringLiteral("&Duplica ..."),
             QStringLiteral("Copia un lavoro con un altro nome e apre la copia"),
             QStringLiteral("duplica"));
    addEntry(FileEntry::Elimina, QStringLiteral("&Elimina ..."),
             QStringLiteral("Mette nel cestino il file di un lavoro"), QStringLiteral("elimina"));
    addDash(7);
    addEntry(FileEntry::Compattamento, QStringLiteral("Compattamento archivio"),
             QStringLiteral("Libera lo spazio inutilizzato di un archivio; lo stato di prima resta "
                            "accanto come .BAK"),
             QStringLiteral("compatta"));
    addEntry(FileEntry::Riparazione, QStringLiteral("Riparazione archivio"),
             QStringLiteral("Recupera quanto è ancora leggibile di un archivio danneggiato"),
             QStringLiteral("ripara"));
    addEntry(FileEntry::RipristinaCopia, QStringLiteral("&Ripristina copia ..."),
             QStringLiteral("Fa un nuovo lavoro di una copia di sicurezza conservata da Zelto"),
             QStringLiteral("ripristina"));
    addDash(10);
    addEntry(FileEntry::ImpostaStampante, QStringLiteral("Imposta stampante ..."),
             QStringLiteral("Sceglie stampante, carta e orientamento"),
             QStringLiteral("stampante"));
    addRecentEntries();
    addDash(17);
    addEntry(FileEntry::Uscita, QStringLiteral("Uscita"), QStringLiteral("Chiude Zelto"),
             QStringLiteral("uscita"), QStringLiteral("Ctrl+Q"));
}

void FileMenu::addEntry(FileEntry entry, const QString& caption, const QString& hint,
                        const QString& iconName, const QString& shortcut)
{
    auto* action = new QAction(caption, this);
    action->setStatusTip(hint);
    if (!iconName.isEmpty())
        action->setIcon(shell::icon(iconName));
    action->setShortcut(QKeySequence(shortcut));
    // Desktops that move such entries elsewhere would leave gaps in the menu.
    action->setMenuRole(QAction::NoRole);
    addAt(static_cast<int>(entry), action);
}

void FileMenu::addDash(int index)
{
    auto* dash = new QAction(this);
    dash->setSeparator(true);
    addAt(index, dash);
}

void FileMenu::addRecentEntries()
{
    addDash(static_cast<int>(FileEntry::SeparatoreRecenti));
    for (int k = First; k <= Last; ++k)
        addEntry(FileEntry{k}, {}, QStringLiteral("Apre di nuovo questo lavoro"));
}

void FileMenu::addAt(int index, QAction* action)
{
    m_entries.emplace(index, action);
    addAction(action);
    connect(action, &QAction::triggered, this, [this, index] { emit chosen(index); });
}

void FileMenu::showRecentJobs(const store::RecentJobs& jobs)
{
    for (int k = First; k <= Last; ++k) {
        // The first "&" marks the digit to press, any other belongs to the path.
        QString caption = jobs.caption(k);
        caption.replace(u'&', QStringLiteral("&&")).replace(0, 2, u'&');
        VoceFile(k).setText(caption);
        VoceFile(k).setVisible(jobs.isVisible(k));
    }
    VoceFile(static_cast<int>(FileEntry::SeparatoreRecenti)).setVisible(jobs.separatorVisible());
}

} // namespace zelto::shell
