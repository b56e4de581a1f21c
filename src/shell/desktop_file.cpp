// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/desktop_file.h"

#include "text/literals.h"

#include <QFile>
#include <QStandardPaths>
#include <QUrl>

#define SI_IMPLEMENTATION
#define SI_NO_CONVERSION
#include <SimpleIni.h>
#include <algorithm>
#include <utility>

namespace zelto::shell {

struct KeyFile::Contents
{
    CSimpleIniA ini{/*a_bIsUtf8=*/true};
};

KeyFile::KeyFile(const QString& path) : m_contents(std::make_unique<Contents>())
{
    // An unreadable file leaves the contents empty, which is what it stands for.
    std::ignore = m_contents->ini.LoadFile(QFile::encodeName(path).constData());
}

KeyFile::~KeyFile() = default;
KeyFile::KeyFile(KeyFile&& other) noexcept = default;
KeyFile& KeyFile::operator=(KeyFile&& other) noexcept = default;

namespace {

QString unescaped(const QString& text)
{
    QString result;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] != u'\\' || i + 1 == text.size()) {
            result += text[i];
            continue;
        }
        const QChar code = text[++i];
        if (code == u's')
            result += u' ';
        else if (code == u'n')
            result += u'\n';
        else if (code == u't')
            result += u'\t';
        else if (code == u'r')
            result += u'\r';
        else
            result += code;
    }
    return result;
}

bool isInstalled(const QString& program)
{
    return !QStandardPaths::findExecutable(program).isEmpty();
}

bool intersects(const QStringList& some, const QStringList& others)
{
    return std::any_of(some.begin(), some.end(),
                       [&](const QString& one) { return others.contains(one); });
}

/// What an argument is after its field codes; nothing when it stood for something we do not have.
struct Expanded
{
    QString text;
    bool dropped = false;
    bool tookFile = false;
};

Expanded expandCodes(const QString& argument, const QString& file)
{
    Expanded result;
    for (qsizetype i = 0; i < argument.size(); ++i) {
        if (argument[i] != u'%' || i + 1 == argument.size()) {
            result.text += argument[i];
            continue;
        }
        const QChar code = argument[++i];
        if (code == u'%') {
            result.text += u'%';
        } else if (QStringView(u"fFuU").contains(code) && !file.isEmpty()) {
            const bool asUrl = code == u'u' || code == u'U';
            result.text += asUrl ? QUrl::fromLocalFile(file).toString(QUrl::FullyEncoded) : file;
            result.tookFile = true;
        } else {
            result.dropped = argument.size() == 2;
        }
    }
    return result;
}

/// The arguments of an Exec line; nothing when a quote is left open.
std::optional<QStringList> splitArguments(const QString& exec)
{
    QStringList arguments;
    QString argument;
    bool quoted = false;
    bool any = false;
    const auto finish = [&] {
        if (any)
            arguments << argument;
        argument.clear();
        any = false;
    };
    for (qsizetype i = 0; i < exec.size(); ++i) {
        const QChar c = exec[i];
        if (c == u'"') {
            quoted = !quoted;
            any = true;
        } else if (c.isSpace() && !quoted) {
            finish();
        } else {
            argument += quoted && c == u'\\' && i + 1 < exec.size() ? exec[++i] : c;
            any = true;
        }
    }
    finish();
    return quoted ? std::nullopt : std::optional(arguments);
}

} // namespace

QString KeyFile::value(const QString& group, const QString& key) const
{
    const char* text =
        m_contents->ini.GetValue(group.toUtf8().constData(), key.toUtf8().constData(), "");
    return unescaped(QString::fromUtf8(text));
}

QStringList KeyFile::list(const QString& group, const QString& key) const
{
    return value(group, key).split(u';', Qt::SkipEmptyParts);
}

bool KeyFile::isTrue(const QString& group, const QString& key) const
{
    return value(group, key) == u"true";
}

std::optional<DesktopEntry> readDesktopEntry(const QString& path, const QString& id,
                                             const QStringList& desktops)
{
    const QString group = u"Desktop Entry"_s;
    const KeyFile file(path);
    const DesktopEntry entry{.id = id,
                             .name = file.value(group, u"Name"_s),
                             .categories = file.list(group, u"Categories"_s),
                             .exec = file.value(group, u"Exec"_s),
                             .shown = [&] {
                                 const QStringList only = file.list(group, u"OnlyShowIn"_s);
                                 return !file.isTrue(group, u"NoDisplay"_s) &&
                                        (only.isEmpty() || intersects(only, desktops)) &&
                                        !intersects(file.list(group, u"NotShowIn"_s), desktops);
                             }()};
    const QString tryExec = file.value(group, u"TryExec"_s);
    const QStringList command = commandLine(entry.exec, {});
    if (file.value(group, u"Type"_s) != u"Application" || file.isTrue(group, u"Hidden"_s) ||
        file.isTrue(group, u"Terminal"_s) || command.isEmpty() || !isInstalled(command.first()) ||
        (!tryExec.isEmpty() && !isInstalled(tryExec)))
        return std::nullopt;
    return entry;
}

QStringList commandLine(const QString& exec, const QString& file)
{
    QStringList command;
    bool fileTaken = file.isEmpty();
    for (const QString& argument : splitArguments(exec).value_or(QStringList())) {
        const Expanded expanded = expandCodes(argument, file);
        fileTaken = fileTaken || expanded.tookFile;
        if (!expanded.dropped)
            command << expanded.text;
    }
    if (!command.isEmpty() && !fileTaken)
        command << file;
    return command;
}

} // namespace zelto::shell
