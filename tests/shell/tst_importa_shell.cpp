#include "db/demodatabase.h"
#include "db/sqlitefile.h"
#include "tests/support/shellrun.h"

#include <QTemporaryDir>
#include <QtTest>

using namespace Qt::StringLiterals;

// The import without a window, `distinta --import FILE --type T [--dry-run] --report R`, as a
// scheduled job runs it: its exit code says whether every row went in.
class TestImportaShell : public QObject
{
    Q_OBJECT

    QTemporaryDir m_folder;
    QString m_database = m_folder.filePath(u"demo.sqlite"_s);
    QString m_report = m_folder.filePath(u"esito.csv"_s);

    ShellRun importa(const QStringList &arguments)
    {
        QFile::remove(m_report);
        return ShellRun::run(QStringList {u"--database"_s, m_database} + arguments);
    }
    QStringList esito() const
    {
        QFile file(m_report);
        if (!file.open(QIODevice::ReadOnly))
            return {};
        return QString::fromUtf8(file.readAll().mid(3)).split(u"\r\n"_s, Qt::SkipEmptyParts);
    }
    // yyyymmdd
    std::int64_t fineDi(int subject)
    {
        dbsetup::SqliteFile file(m_database);
        return file.scalar(QStringLiteral("SELECT CAST(strftime('%Y%m%d', GD02_DATAFINEVAL) AS INTEGER) FROM "
                                          "GD02_DISTINTA WHERE GD02_ID_GD01 = 1 AND GD02_CLIFOR_CG44 = %1")
                               .arg(subject));
    }

private slots:
    void initTestCase()
    {
        if (!QFileInfo::exists(ShellRun::program()))
            QSKIP("the distinta program is not built");
        dbsetup::ensureDemoDatabase(m_database);
    }

    // The export read back is all unchanged; an edited copy with one unknown subject exits with
    // 4, writes the other change unless it is only a dry run, and reports the refused row.
    void exitCodes()
    {
        const QString exported = m_folder.filePath(u"gdo.csv"_s);
        QCOMPARE(importa({u"--export"_s, u"CLI-GDO"_s, u"--csv"_s, exported}).exitCode, 0);
        ShellRun result = importa({u"--import"_s, exported, u"--type"_s, u"CLI-GDO"_s, u"--report"_s, m_report});
        QCOMPARE(result.exitCode, 0);
        QStringList lines = esito();
        QCOMPARE(lines.first(), u"Riga;Codice;Data inizio;Data fine;Esito"_s);
        QCOMPARE(lines.filter(u";Invariato"_s).size(), lines.size() - 1);

        QFile file(exported);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QStringList rows = QString::fromUtf8(file.readAll()).split(u"\r\n"_s, Qt::SkipEmptyParts);
        file.close();
        QCOMPARE(fineDi(1043), 20991231);
        QVERIFY(rows.at(1).startsWith(u"1;1043;"_s));
        rows[1].replace(u";31/12/2099;"_s, u";31/12/2098;"_s);
        rows << u"1;424242;Nessuno;01/01/2024;31/12/2099"_s;
        const QString edited = m_folder.filePath(u"modificato.csv"_s);
        file.setFileName(edited);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(rows.join(u"\r\n"_s).toUtf8());
        file.close();

        result = importa({u"--import"_s, edited, u"--type"_s, u"cli-gdo"_s, u"--dry-run"_s, u"--report"_s, m_report});
        QVERIFY2(result.exitCode == 4, qPrintable(result.err));
        QCOMPARE(fineDi(1043), 20991231);
        lines = esito();
        QCOMPARE(lines.at(1), u"2;1043;01/03/2024;31/12/2098;Da aggiornare"_s);
        QCOMPARE(lines.last(),
                 QStringLiteral("%1;424242;01/01/2024;31/12/2099;Riga %1, campo 2 (Codice): il soggetto "
                                "424242 non esiste")
                     .arg(rows.size()));

        result = importa({u"--import"_s, edited, u"--type"_s, u"CLI-GDO"_s, u"--report"_s, m_report});
        QCOMPARE(result.exitCode, 4);
        QCOMPARE(fineDi(1043), 20981231);
    }

    // Bad arguments and a file that is no spreadsheet end with 1, told once, nothing written.
    void refusals()
    {
        const QString text = m_folder.filePath(u"note.txt"_s);
        QFile file(text);
        QVERIFY(file.open(QIODevice::WriteOnly));
        static const char bytes[] = "\x00\x01\x02 not a table";
        file.write(bytes, sizeof bytes - 1);
        file.close();
        ShellRun result = importa({u"--import"_s, text, u"--type"_s, u"CLI-GDO"_s, u"--report"_s, m_report});
        QCOMPARE(result.exitCode, 1);
        QVERIFY(esito().isEmpty());
        QCOMPARE(result.err.count(u"distinta: l'importazione nella distinta \"CLI-GDO\" non è stata eseguita."_s), 1);

        result = importa({u"--import"_s, text, u"--type"_s, u"CLI-GDO"_s, u"--report"_s, u"esito.pdf"_s});
        QCOMPARE(result.exitCode, 1);
        QVERIFY2(result.err.contains(u"Con --import indicare con --report il file .csv o .xlsx dell'esito."_s),
                 qPrintable(result.err));
        result = importa({u"--import"_s, text, u"--check"_s, u"--report"_s, m_report});
        QCOMPARE(result.exitCode, 1);
        QVERIFY2(result.err.contains(
                     u"Indicare una sola tra --print, --export, --history, --compare, --check e --import."_s),
                 qPrintable(result.err));
    }
};

QTEST_MAIN(TestImportaShell)
#include "tst_importa_shell.moc"
