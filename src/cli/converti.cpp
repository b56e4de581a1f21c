// SPDX-License-Identifier: GPL-3.0-or-later
// zelto-converti: makes jobs of those of the edition for Windows.
#include "calc/job_loader.h"
#include "cli/clean_end.h"
#include "cli/console.h"
#include "store/files/file_names.h"
#include "store/jet/conversion.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

#include <array>
#include <getopt.h>

using namespace Qt::StringLiterals;

namespace {

namespace cli = zelto::cli;
namespace store = zelto::store;

const QString Usage =
    u"Uso: zelto-converti [-o CARTELLA] FILE...\n"
    "\n"
    "Converte i lavori di Zelto per Windows. Gli originali non cambiano; ogni nuovo lavoro sta\n"
    "accanto al suo, con « convertito» dietro il nome.\n"
    "\n"
    "  -o, --cartella CARTELLA  mette i nuovi lavori nella cartella\n"
    "  -h, --help               mostra questo testo\n"
    "      --version            mostra la versione\n"_s;

struct Request
{
    QString folder;
    QStringList files;
    bool help = false;
    bool version = false;
};

Request readCommand(std::span<char*> arguments)
{
    constexpr std::array LongOptions{option{"cartella", required_argument, nullptr, 'o'},
                                     option{"help", no_argument, nullptr, 'h'},
                                     option{"version", no_argument, nullptr, 'v'},
                                     option{nullptr, 0, nullptr, 0}};
    Request request;
    opterr = 0;
    for (;;) {
        const int found = getopt_long(static_cast<int>(arguments.size()), arguments.data(), ":o:h",
                                      LongOptions.data(), nullptr);
        if (found < 0)
            break;
        if (found == 'o')
            request.folder = QString::fromLocal8Bit(optarg);
        else if (found == 'h')
            request.help = true;
        else if (found == 'v')
            request.version = true;
        else
            throw cli::UsageError(u"opzione sconosciuta o senza valore: «%1»"_s.arg(
                QString::fromLocal8Bit(arguments[static_cast<std::size_t>(optind) - 1])));
    }
    for (const char* file : arguments.subspan(static_cast<std::size_t>(optind)))
        request.files << QString::fromLocal8Bit(file);
    if (request.files.isEmpty() && !request.help && !request.version)
        throw cli::UsageError(u"manca il file da convertire"_s);
    return request;
}

/// One line for the file: what became of it.
bool convert(const QString& original, const QString& folder)
{
    QString target = store::jet::convertedPath(original);
    if (!folder.isEmpty())
        target = QDir(folder).filePath(QFileInfo(target).fileName());
    bool done = false;
    QString said;
    try {
        const auto report = store::jet::convertJob(original, target, [](store::Database& lavoro) {
            (void)zelto::calc::CaricaLavoro(lavoro);
        });
        const QString inUse = store::jet::mayBeInUse(original)
                                  ? u" Il file «.ldb» dice che forse è in uso."_s
                                  : QString();
        said = u"convertito in «%1». %2%3"_s.arg(target, report.text(), inUse);
        done = true;
    } catch (const std::exception& error) {
        said = u"non convertito. %1"_s.arg(QString::fromUtf8(error.what()));
    }
    cli::writeOut(u"%1: %2\n"_s.arg(original, said.replace(u'\n', u' ')));
    return done;
}

int run(const Request& request)
{
    if (request.help || request.version) {
        cli::writeOut(request.help ? Usage : u"zelto-converti " ZELTO_VERSION "\n"_s);
        return cli::Done;
    }
    if (!request.folder.isEmpty() && !QDir().mkpath(request.folder))
        throw cli::UsageError(u"impossibile creare la cartella «%1»"_s.arg(request.folder));
    int status = cli::Done;
    for (const QString& file : request.files)
        if (!convert(file, request.folder))
            status = cli::JobFailed;
    return status;
}

} // namespace

int main(int argc, char* argv[])
{
    cli::cleanUpOnSignals();
    const QCoreApplication application(argc, argv);
    cli::Console console(u"zelto-converti"_s);
    return cli::runCommand(console, u"mostra l'uso"_s, [&] {
        return run(readCommand(std::span(argv, static_cast<std::size_t>(argc))));
    });
}
