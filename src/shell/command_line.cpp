// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/command_line.h"

#include "text/literals.h"

namespace zelto::shell {

std::optional<QString> textAskedFor(const QStringList& arguments)
{
    const QStringList options = arguments.mid(0, arguments.indexOf(u"--"));
    if (options.contains(u"--help") || options.contains(u"-h"))
        return u"Uso: zelto [LAVORO.ZLT]\n"
               u"Apre la finestra di Zelto e, se indicato, il lavoro.\n"
               u"\n"
               u"  -h, --help   questo aiuto\n"
               u"  --version    versione del programma\n"_s;
    if (options.contains(u"--version"))
        return QStringLiteral("zelto " ZELTO_VERSION "\n");
    return std::nullopt;
}

QString jobNamed(const QStringList& arguments)
{
    QString lavoro;
    bool optionsEnded = false;
    for (const QString& argument : arguments) {
        if (!optionsEnded && argument == u"--")
            optionsEnded = true;
        else if (!optionsEnded && argument.startsWith(u'-'))
            throw UsageError(u"%1: opzione non valida"_s.arg(argument));
        else if (!lavoro.isEmpty())
            throw UsageError(u"si può aprire un solo lavoro alla volta"_s);
        else
            lavoro = argument;
    }
    return lavoro;
}

} // namespace zelto::shell
