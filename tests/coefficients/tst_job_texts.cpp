// SPDX-License-Identifier: GPL-3.0-or-later
#include "coefficients/job_texts.h"
#include "store/schema.h"
#include "store/store_fixture.h"
#include "support/dump.h"
#include "support/runner.h"

using namespace Qt::StringLiterals;
using namespace zelto::coefficients;
using zelto::store::Database;
using zelto::store::TabellaDatiGenerali;
using zelto::store::TabellaVariabili;

class TestJobTexts : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_job.emplace(Database::open(m_folder.newJob(u"%1.ZLT"_s.arg(++m_jobs)))); }

    /// Also where the record is missing.
    void general()
    {
        m_job->Execute(u"DELETE FROM [Dati Generali]"_s);
        QCOMPARE(loadTexts(*m_job, TabellaDatiGenerali), JobTexts());
        const JobTexts texts{{u"Descrizione"_s, u"Condominio"_s},
                             {u"Data"_s, u"31/12/2013"_s},
                             {u"Tabella 10"_s, u"Ascensore"_s},
                             {u"Tabella Codici"_s, u"A\tScala\t50\r\n"_s}};
        saveTexts(*m_job, TabellaDatiGenerali, texts, {});
        QCOMPARE(loadTexts(*m_job, TabellaDatiGenerali), texts);
        QVERIFY(zelto::test::dumpOf(*m_job).contains(
            u"Dati Generali: [1] [Condominio] - - [2013-12-31] - - - - - - - - - - [Ascensore]"));
        saveTexts(*m_job, TabellaDatiGenerali, {{u"Descrizione"_s, QString()}}, texts);
        QVERIFY(zelto::test::dumpOf(*m_job).contains(u"Dati Generali: [1] - - - - - -"));
    }

    void groups()
    {
        m_job->Execute(u"DELETE FROM Variabili"_s);
        const JobTexts loaded = loadTexts(*m_job, TabellaVariabili);
        QCOMPARE(loaded[u"Var6"_s], u" "_s);
        JobTexts texts = loaded;
        texts.remove(u"Var3"_s);
        texts[u"Var4"_s] = u"1\tA\tTesto\r\n"_s;
        saveTexts(*m_job, TabellaVariabili, texts, loaded);
        QVERIFY(zelto::test::dumpOf(*m_job).contains(
            u"Variabili: [ ] [ ] [ ] - [1\tA\tTesto\r\n] [ ] [ ]"));
    }

    /// What is refused leaves all of the record as it was.
    void refusals()
    {
        const QString before = zelto::test::dumpOf(*m_job);
        for (const auto& [field, value, error] : {std::tuple{u"Data"_s, u"31/02/2013"_s, 3421},
                                                  {u"Descrizione"_s, QString(31, u'x'), 3163}})
            try {
                saveTexts(*m_job, TabellaDatiGenerali,
                          {{u"Relazione"_s, u"Nuova"_s}, {field, value}}, {});
                QFAIL("stored");
            } catch (const zelto::store::DatabaseError& refusal) {
                QCOMPARE(refusal.code(), error);
            }
        QCOMPARE(zelto::test::dumpOf(*m_job), before);
    }

private:
    zelto::test::JobFolder m_folder;
    std::optional<Database> m_job;
    int m_jobs = 0;
};

ZELTO_TEST(TestJobTexts)
#include "tst_job_texts.moc"
