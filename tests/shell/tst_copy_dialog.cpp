// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/copy_dialog.h"
#include "store/store_fixture.h"
#include "support/accessible_names.h"
#include "support/runner.h"

#include <QComboBox>
#include <QPushButton>
#include <QTreeWidget>

using namespace Qt::StringLiterals;
using namespace zelto::test;
using zelto::shell::CopyDialog;

class TestCopyDialog : public QObject
{
    Q_OBJECT

private slots:
    /// Two jobs, A with two copies whose older one is damaged, B with one.
    void byKeyboard()
    {
        const JobFolder folder;
        const QString a = folder.newJob(u"A.ZLT"_s);
        const QString b = folder.newJob(u"B.ZLT"_s);
        const zelto::store::JobCopies copies(folder.file(u"copie"_s));
        copies.keep(a);
        copies.keep(b);
        writeBytes(copies.copiesOf(a).front().path, {});
        copies.keep(a, QDateTime(QDate(2031, 1, 2), QTime(3, 4, 5)));

        CopyDialog dialog(copies, b, nullptr);
        dialog.show();
        QVERIFY(QTest::qWaitForWindowActive(&dialog));
        QCOMPARE(namelessControls(dialog), QStringList());
        auto& jobs = *dialog.findChild<QComboBox*>();
        auto& table = *dialog.findChild<QTreeWidget*>();
        const auto& restore = *dialog.findChild<QPushButton*>(u"BtRipristina"_s);
        QCOMPARE(dialog.chosen().value().job, b);
        QVERIFY(table.hasFocus());

        QTest::keyClick(&dialog, Qt::Key_L, Qt::AltModifier);
        QVERIFY(jobs.hasFocus());
        QTest::keyClick(&jobs, Qt::Key_Up);
        QCOMPARE(table.topLevelItem(0)->text(0), u"02/01/2031 03:04:05"_s);
        QCOMPARE(table.topLevelItem(0)->text(2), u"1"_s);
        QTest::keyClick(&jobs, Qt::Key_Tab);
        QTest::keyClick(&table, Qt::Key_Down);
        QCOMPARE(table.currentItem()->text(2), u"illeggibile"_s);
        QVERIFY(!restore.isEnabled() && !dialog.chosen());
        QTest::keyClick(&table, Qt::Key_Return);
        QCOMPARE(dialog.result(), int(QDialog::Rejected));
        QTest::keyClick(&table, Qt::Key_Up);
        QTest::keyClick(&table, Qt::Key_Return);
        QCOMPARE(dialog.result(), int(QDialog::Accepted));
        QCOMPARE(dialog.chosen().value().job, a);

        const CopyDialog ofNoJob(copies, u"/nessun/lavoro.ZLT"_s, nullptr);
        QCOMPARE(ofNoJob.chosen().value().job, a);
    }
};

ZELTO_TEST(TestCopyDialog)
#include "tst_copy_dialog.moc"
