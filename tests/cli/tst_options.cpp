// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/options.h"
#include "support/runner.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace zelto::cli;

namespace {

Options parse(const QString& line)
{
    return parseOptions(QStringList{u"zelto-stampa"_s} + line.split(u' ', Qt::SkipEmptyParts));
}

/// The choices of a command line as one text.
QString summary(const Options& o)
{
    QStringList parts{o.lavori.join(u'+')};
    const auto add = [&](bool chosen, const char* name) {
        if (chosen)
            parts << QString::fromLatin1(name);
    };
    parts << o.sezioni;
    add(o.calcolo.dettaglio, "dettaglio");
    for (const QString& kind : zelto::reports::tableWords())
        if (o.calcolo.tabelle.contains(kind))
            parts << kind;
    add(o.calcolo.formato == zelto::reports::FormatoDettaglio::Esteso, "esteso");
    add(o.calcolo.indice == zelto::calc::IndicePiano::Proporzionale, "proporzionale");
    add(o.mostra, "mostra");
    add(o.riparto && o.riparto->arrotondamento == zelto::calc::Arrotondamento::AQuadratura,
        "quadratura");
    parts << u"p%1"_s.arg(o.calcolo.primaPagina) << o.pdf << o.uscite;
    for (const auto& [format, path] : o.formati)
        parts << path;
    if (o.riparto)
        parts << o.riparto->importo + u'/' + o.riparto->quote.kind->word + o.riparto->quote.key;
    return parts.join(u' ');
}

} // namespace

class TestOptions : public QObject
{
    Q_OBJECT

private slots:
    void accepted_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QString>("choices");
        const QString all = u"prima-pagina relazione calcolo dettaglio generali tabelle scale"_s;
        QTest::addRow("defaults") << u"A.ZLT"_s << u"A.ZLT "_s + all + u" p1  ."_s;
        QTest::addRow("outputs") << u"-o a.pdf A.ZLT --uscite=u B.ZLT"_s
                                 << u"A.ZLT+B.ZLT "_s + all + u" p1 a.pdf u"_s;
        QTest::addRow("sections") << u"--sezioni relazione,calcolo --calcolo scale A.ZLT"_s
                                  << u"A.ZLT relazione calcolo scale p1  ."_s;
        QTest::addRow("layout")
            << u"--formato esteso --indice-proporzionale --prima-pagina 12 --mostra A.ZLT"_s
            << u"A.ZLT "_s + all + u" esteso proporzionale mostra p12  ."_s;
        QTest::addRow("allocation")
            << u"--riparto 1000,50 A.ZLT"_s << u"A.ZLT "_s + all + u" p1  . 1000,50/generali"_s;
        QTest::addRow("allocation by table") << u"--riparto 5 --quote tabella=3 A.ZLT"_s
                                             << u"A.ZLT "_s + all + u" p1  . 5/tabelle3"_s;
        QTest::addRow("closed allocation") << u"--riparto 5 --quadratura A.ZLT"_s
                                           << u"A.ZLT "_s + all + u" quadratura p1  . 5/generali"_s;
        QTest::addRow("spreadsheets")
            << u"--xlsx t.xlsx --csv t A.ZLT"_s << u"A.ZLT "_s + all + u" p1  . t.xlsx t"_s;
        QTest::addRow("job that looks like an option")
            << u"-- -A.ZLT"_s << u"-A.ZLT "_s + all + u" p1  ."_s;
    }

    void accepted()
    {
        QFETCH(QString, line);
        QTEST(summary(parse(line)), "choices");
    }

    void staircaseTakesTheIndex()
    {
        const Options options =
            parse(u"--indice-proporzionale --riparto 5 --quote scala=b A.ZLT"_s);
        QCOMPARE(options.riparto->quote.key, u"B"_s);
        QCOMPARE(options.riparto->quote.indice, zelto::calc::IndicePiano::Proporzionale);
    }

    void refused_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QString>("named"); // what the message has to name
        QTest::addRow("no job") << u"--mostra"_s << u"lavoro"_s;
        QTest::addRow("unknown option") << u"--stampa A.ZLT"_s << u"--stampa"_s;
        QTest::addRow("unknown short option") << u"-x A.ZLT"_s << u"-x"_s;
        QTest::addRow("missing value") << u"A.ZLT -o"_s << u"-o"_s;
        QTest::addRow("value nobody asked for") << u"--mostra=si A.ZLT"_s << u"--mostra"_s;
        QTest::addRow("section") << u"--sezioni calcolo,copertina A.ZLT"_s << u"copertina"_s;
        QTest::addRow("no section") << u"--calcolo= A.ZLT"_s << u"--calcolo"_s;
        QTest::addRow("format") << u"--formato medio A.ZLT"_s << u"medio"_s;
        QTest::addRow("page number") << u"--prima-pagina 0 A.ZLT"_s << u"--prima-pagina"_s;
        QTest::addRow("amount") << u"--riparto 10.005 A.ZLT"_s << u"10.005"_s;
        QTest::addRow("shares") << u"--riparto 5 --quote tabella=11 A.ZLT"_s << u"tabella=11"_s;
        QTest::addRow("staircase without code")
            << u"--riparto 5 --quote scala= A.ZLT"_s << u"scala="_s;
        QTest::addRow("closing without amount") << u"--quadratura A.ZLT"_s << u"--quadratura"_s;
        QTest::addRow("shares without amount") << u"--quote generali A.ZLT"_s << u"--quote"_s;
        QTest::addRow("calculation and allocation")
            << u"--calcolo scale --riparto 5 A.ZLT"_s << u"--calcolo"_s;
        QTest::addRow("same name twice") << u"x/A.ZLT y/a.zlt"_s << u"«a»"_s;
    }

    void refused()
    {
        QFETCH(QString, line);
        QFETCH(QString, named);
        QString message;
        try {
            parse(line);
        } catch (const UsageError& error) {
            message = QString::fromUtf8(error.what());
        }
        QVERIFY2(message.contains(named), qPrintable(message));
    }
};

ZELTO_TEST(TestOptions)
#include "tst_options.moc"
