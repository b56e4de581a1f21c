// SPDX-License-Identifier: GPL-3.0-or-later
#include "text/system_reason.h"

#include "text/literals.h"

#include <QIODevice>

#include <algorithm>
#include <array>
#include <cerrno>

namespace zelto::text {

namespace {

struct Reason
{
    int error;
    QStringView text;
};

constexpr std::array Reasons{
    Reason{EACCES, u"permesso negato"},
    Reason{EPERM, u"operazione non permessa"},
    Reason{ENOENT, u"file o cartella inesistente"},
    Reason{EEXIST, u"esiste già"},
    Reason{ENOTDIR, u"non è una cartella"},
    Reason{EISDIR, u"è una cartella"},
    Reason{ENOTEMPTY, u"la cartella non è vuota"},
    Reason{ENOSPC, u"spazio su disco esaurito"},
    Reason{EDQUOT, u"quota di disco esaurita"},
    Reason{EFBIG, u"file troppo grande"},
    Reason{EROFS, u"il disco è di sola lettura"},
    Reason{EIO, u"errore di lettura o scrittura"},
    Reason{EMFILE, u"troppi file aperti"},
    Reason{ENFILE, u"troppi file aperti nel sistema"},
    Reason{ENOMEM, u"memoria esaurita"},
    Reason{ENAMETOOLONG, u"nome troppo lungo"},
    Reason{ELOOP, u"è un collegamento"},
    Reason{EBUSY, u"in uso"},
    Reason{ETXTBSY, u"in uso"},
    Reason{EINVAL, u"operazione o nome non validi"},
    Reason{EXDEV, u"è su un altro disco"},
    Reason{ENXIO, u"non è un file"},
    Reason{ENODEV, u"dispositivo assente"},
    Reason{EPIPE, u"nessuno ne legge più"},
    Reason{ESTALE, u"il disco di rete non risponde più"},
    Reason{ENOTSUP, u"il disco non lo consente"},
};

} // namespace

QString systemReason(int error)
{
    const auto* const known = std::ranges::find(Reasons, error, &Reason::error);
    return known != Reasons.end() ? known->text.toString() : u"errore %1 del sistema"_s.arg(error);
}

QString systemReason(const QIODevice& file)
{
    // Of a failure the file keeps only the system's words for it.
    const QString words = file.errorString();
    const auto* const known =
        std::ranges::find(Reasons, words, [](const Reason& r) { return qt_error_string(r.error); });
    return known != Reasons.end() ? known->text.toString() : words;
}

} // namespace zelto::text
