// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/options.h"

#include <QByteArrayList>
#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>
#include <array>
#include <getopt.h>
#include <vector>

namespace zelto::cli {

namespace {

constexpr int MaxPrimaPagina = 999;

enum Option : int {
    Pdf = 'o',
    Uscite = 'u',
    Help = 'h',
    Sezioni = 256,
    Calcolo,
    Formato,
    IndiceProporzionale,
    PrimaPagina,
    Riparto,
    Quote,
    Quadratura,
    Mostra,
    Version,
    FirstFormat, ///< those of the tables, in their order
};

std::vector<option> longOptions()
{
    std::vector<option> all{
        {"pdf", required_argument, nullptr, Pdf},
        {"uscite", required_argument, nullptr, Uscite},
        {"sezioni", required_argument, nullptr, Sezioni},
        {"calcolo", required_argument, nullptr, Calcolo},
        {"formato", required_argument, nullptr, Formato},
        {"indice-proporzionale", no_argument, nullptr, IndiceProporzionale},
        {"prima-pagina", required_argument, nullptr, PrimaPagina},
        {"riparto", required_argument, nullptr, Riparto},
        {"quote", required_argument, nullptr, Quote},
        {"quadratura", no_argument, nullptr, Quadratura},
        {"mostra", no_argument, nullptr, Mostra},
        {"help", no_argument, nullptr, Help},
        {"version", no_argument, nullptr, Version},
    };
    static const QByteArrayList names = [] {
        QByteArrayList formats;
        for (const reports::TableFormat& format : reports::tableFormats())
            formats << format.option.toUtf8();
        return formats;
    }();
    int value = FirstFormat;
    for (const QByteArray& name : names)
        all.push_back({name.constData(), required_argument, nullptr, value++});
    all.push_back({nullptr, 0, nullptr, 0});
    return all;
}

/// The words of the comma-separated list, all of them known.
QStringList readList(const QString& list, const QString& option, const QStringList& known)
{
    QStringList chosen;
    for (const QString& name : list.split(u',')) {
        if (!known.contains(name.trimmed()))
            throw UsageError(u"%1: «%2» non è una voce dell'elenco"_s.arg(option, name));
        chosen << name.trimmed();
    }
    return chosen;
}

reports::FormatoDettaglio readFormato(const QString& text)
{
    if (text == u"esteso")
        return reports::FormatoDettaglio::Esteso;
    if (text == u"compatto")
        return reports::FormatoDettaglio::Compatto;
    throw UsageError(u"--formato: «%1» non è esteso né compatto"_s.arg(text));
}

int readPrimaPagina(const QString& text)
{
    bool isNumber = false;
    const int number = text.toInt(&isNumber);
    if (!isNumber || number < 1 || number > MaxPrimaPagina)
        throw UsageError(u"--prima-pagina: «%1» non è un numero da 1 a %2"_s.arg(
            text, QString::number(MaxPrimaPagina)));
    return number;
}

QString readImporto(const QString& text)
{
    static const QRegularExpression amount(u"^ *-?[0-9 ]*[0-9][0-9 ]*([.,][0-9]{0,2})? *$"_s);
    if (!amount.match(text).hasMatch())
        throw UsageError(u"--riparto: «%1» non è un importo"_s.arg(text));
    return text;
}

/// The kinds of shares as one types them.
QStringList shareWords()
{
    QStringList words;
    for (const reports::TableKind& kind : reports::tableKinds())
        words << (kind.keyName.isEmpty() ? kind.shareWord : kind.shareWord + u'=' + kind.keyName);
    return words;
}

reports::InsiemeQuote readQuote(const QString& text)
{
    const qsizetype equals = text.indexOf(u'=');
    const QString value = equals < 0 ? QString() : text.sliced(equals + 1);
    for (const reports::TableKind& kind : reports::tableKinds()) {
        if (kind.keyName.isEmpty() && text == kind.shareWord)
            return {.kind = &kind};
        if (kind.keyName.isEmpty() || text.left(equals) != kind.shareWord)
            continue;
        if (const QString key = kind.readKey(value); !key.isEmpty())
            return {.kind = &kind, .key = key};
    }
    QStringList words = shareWords();
    const QString last = words.takeLast();
    throw UsageError(u"--quote: «%1» non è %2 o %3"_s.arg(text, words.join(u", "_s), last));
}

QStringList calculationWords()
{
    return QStringList(u"dettaglio"_s) + reports::tutteLeTabelle();
}

/// The parts of the command line that only make sense together.
struct Pieces
{
    Options options;
    std::optional<QString> importo;
    std::optional<reports::InsiemeQuote> quote;
    bool calcoloGiven = false;
    bool quadratura = false;
};

void apply(Pieces& pieces, int option, const QString& value)
{
    Options& options = pieces.options;
    switch (option) {
    case Pdf:
        options.pdf = value;
        break;
    case Uscite:
        options.uscite = value;
        break;
    case Sezioni:
        options.sezioni = readList(value, u"--sezioni"_s, reports::tutteLeSezioni());
        break;
    case Calcolo:
        options.calcolo.tabelle = readList(value, u"--calcolo"_s, calculationWords());
        options.calcolo.dettaglio = options.calcolo.tabelle.contains(calculationWords().front());
        pieces.calcoloGiven = true;
        break;
    case Formato:
        options.calcolo.formato = readFormato(value);
        break;
    case IndiceProporzionale:
        options.calcolo.indice = calc::IndicePiano::Proporzionale;
        break;
    case PrimaPagina:
        options.calcolo.primaPagina = readPrimaPagina(value);
        break;
    case Riparto:
        pieces.importo = readImporto(value);
        break;
    case Quote:
        pieces.quote = readQuote(value);
        break;
    case Quadratura:
        pieces.quadratura = true;
        break;
    case Mostra:
        options.mostra = true;
        break;
    case Help:
        options.action = Options::Action::ShowHelp;
        break;
    case Version:
        options.action = Options::Action::ShowVersion;
        break;
    default:
        options.formati[static_cast<std::size_t>(option - FirstFormat)] = value;
        break;
    }
}

/// Jobs of one name would overwrite each other's PDF and text files.
void requireDistinctNames(const QStringList& lavori)
{
    QStringList names;
    for (const QString& lavoro : lavori) {
        const QString name = jobName(lavoro);
        if (names.contains(name, Qt::CaseInsensitive))
            throw UsageError(u"due lavori hanno lo stesso nome «%1»"_s.arg(name));
        names << name;
    }
}

Options complete(Pieces pieces)
{
    Options& options = pieces.options;
    if (options.action != Options::Action::Print)
        return options;
    if (options.lavori.isEmpty())
        throw UsageError(u"manca il lavoro da stampare"_s);
    requireDistinctNames(options.lavori);
    if (pieces.quote && !pieces.importo)
        throw UsageError(u"--quote vale solo insieme a --riparto"_s);
    if (pieces.quadratura && !pieces.importo)
        throw UsageError(u"--quadratura vale solo insieme a --riparto"_s);
    if (pieces.calcoloGiven && pieces.importo)
        throw UsageError(u"--calcolo e --riparto non vanno insieme"_s);
    if (pieces.importo) {
        options.riparto = reports::OpzioniRiparto{
            .importo = *pieces.importo,
            .quote = pieces.quote.value_or(reports::InsiemeQuote()),
            .arrotondamento = pieces.quadratura ? calc::Arrotondamento::AQuadratura
                                                : calc::Arrotondamento::PerQuota};
        options.riparto->quote.indice = options.calcolo.indice;
    }
    return options;
}

/// getopt's verdict on an argument that it could not read.
[[noreturn]] void refuse(int verdict, const char* argument)
{
    const QString name = QString::fromUtf8(argument);
    throw UsageError(verdict == ':' ? u"%1: manca il valore"_s.arg(name)
                                    : u"%1: opzione non valida"_s.arg(name));
}

} // namespace

QString jobName(const QString& lavoro)
{
    const QFileInfo file(lavoro);
    const QString name = file.completeBaseName();
    // Nothing but points would be the folder itself or the one above it.
    return name.count(u'.') == name.size() ? file.fileName() : name;
}

Options parseOptions(const QStringList& arguments)
{
    QByteArrayList bytes;
    for (const QString& argument : arguments)
        bytes << argument.toUtf8();
    std::vector<char*> argv;
    argv.reserve(static_cast<std::size_t>(bytes.size()) + 1);
    for (QByteArray& argument : bytes)
        argv.push_back(argument.data());
    const int argc = static_cast<int>(argv.size());
    argv.push_back(nullptr);

    const std::vector<option> known = longOptions();
    Pieces pieces;
    optind = 0; // start afresh: getopt keeps its place between calls
    while (true) {
        const int place = optind == 0 ? 1 : optind;
        const int found = getopt_long(argc, argv.data(), ":o:u:h", known.data(), nullptr);
        if (found == -1)
            break;
        if (found == '?' || found == ':')
            refuse(found, argv[static_cast<std::size_t>(std::max(optind - 1, place))]);
        apply(pieces, found, QString::fromUtf8(optarg));
    }
    for (int i = optind; i < argc; ++i)
        pieces.options.lavori << QString::fromUtf8(argv[static_cast<std::size_t>(i)]);
    return complete(std::move(pieces));
}

QString helpText()
{
    const QString text =
        u"Uso: zelto-stampa [opzioni] LAVORO.ZLT [LAVORO2.ZLT ...]\n"
        u"Calcola e stampa le tabelle millesimali di uno o più lavori, senza modificarli.\n"
        u"\n"
        u"  -o, --pdf FILE            le pagine stampate in un PDF; con più lavori FILE è una\n"
        u"                            cartella, un PDF per lavoro (senza -o nessun PDF)\n"
        u"  -u, --uscite CARTELLA     cartella di consistenza.out, calcolo.out e scale.out\n"
        u"                            (se manca, quella corrente; con più lavori una\n"
        u"                            sottocartella per lavoro)\n"
        u"  --sezioni LISTA           di %1 (se manca, tutte)\n"
        u"  --calcolo LISTA           di %2 (se manca, tutte)\n"
        u"  --formato esteso|compatto formato del dettaglio (se manca, compatto)\n"
        u"  --indice-proporzionale    calcola l'indice di piano in proporzione alla "
        u"consistenza\n"
        u"  --prima-pagina N          numero della prima pagina di calcolo (se manca, 1)\n"
        u"  --riparto IMPORTO         stampa il riparto dell'importo al posto del calcolo\n"
        u"  --quote %3\n"
        u"                            millesimi del riparto (se manca, generali)\n"
        u"  --quadratura              quote del riparto che sommano all'importo, al centesimo\n"
        u"%4"
        u"  --mostra                  scrive anche le tabelle come testo allineato\n"
        u"  -h, --help                questo aiuto\n"
        u"  --version                 versione del programma\n"
        u"\n"
        u"Stato d'uscita: 0 fatto; 1 comando errato; 2 un lavoro non letto o non stampato.\n"_s;
    QString formats;
    for (const reports::TableFormat& format : reports::tableFormats())
        formats += format.help;
    return text.arg(reports::tutteLeSezioni().join(u','), calculationWords().join(u','),
                    shareWords().join(u'|'), formats);
}

} // namespace zelto::cli
