#pragma once

#include "tests/forms/distintafixture.h"

#include "db/sqlitefile.h"
#include "framework/treelist/treelistdateeditor.h"
#include "framework/treelist/treelistview.h"

#include <QDir>

// The editor on a small classification with campaigns, workflow states and a contract condition,
// for the tests of the journal, undo and the history's readings.
// Customers 10..19. A01: 10 > 11 > 12 > 13 > 14, with 15 under 10, and a root 16; in-invoice
// campaigns on 11 and 14, a workflow state on every node, a contract condition on 14.
struct StoricoFixture : DistintaFixture
{
    StoricoFixture()
    {
        for (int code = 10; code <= 19; ++code)
            soggetto(0, code, QStringLiteral("Cliente %1").arg(code));
        a01 = tipo(0, QStringLiteral("A01"), QStringLiteral("Tutti i clienti"));
        n10 = nodo(a01, 0, 10);
        n11 = nodo(a01, 0, 11, {.parent = n10});
        n12 = nodo(a01, 0, 12, {.parent = n11});
        n13 = nodo(a01, 0, 13, {.parent = n12});
        n14 = nodo(a01, 0, 14, {.parent = n13});
        n15 = nodo(a01, 0, 15, {.parent = n10});
        n16 = nodo(a01, 0, 16);
        for (qint64 node : {n11, n14})
            exec(QStringLiteral("INSERT INTO GD12_PROMO (GD12_DITTA_CG18, GD12_ID_GD02, GD12_ID_MG94) "
                                "VALUES (1, %1, 7)")
                     .arg(node));
        exec(QStringLiteral("INSERT INTO WF02_STATORIGA (WF02_GUID, WF02_TABELLA, WF02_ID_WF01, WF02_UTENTECRE) "
                            "SELECT gd02_guid, 'GD02_DISTINTA', 3, 'prima' FROM GD02_DISTINTA"));
        condizione(contratto(14), n14);
        // What the set-up wrote is no one's operation.
        exec(QStringLiteral("DELETE FROM GD91_RIGHESTORICO"));
    }

    // Every row of the three tables an undo restores, every column, in key order.
    QStringList righe()
    {
        QStringList rows;
        for (const QString &table :
             {QStringLiteral("GD02_DISTINTA"), QStringLiteral("GD12_PROMO"), QStringLiteral("WF02_STATORIGA")}) {
            const db::RecordsetPtr all = host.database().connection()->openRecordset(
                QStringLiteral("SELECT * FROM %1 ORDER BY 1").arg(table));
            for (int row = 0; row < all->recordCount(); ++row) {
                QStringList values;
                for (int field = 0; field < all->fieldCount(); ++field)
                    values << all->valueAt(row, field).toString();
                rows << table + QLatin1Char(':') + values.join(QLatin1Char('|'));
            }
        }
        return rows;
    }
    // The operations, newest last, as "name/kind/reverses/reversed by".
    QStringList operazioni()
    {
        QStringList ops;
        const db::RecordsetPtr all = host.database().connection()->openRecordset(
            QStringLiteral("SELECT GD90_OPERAZIONE, GD90_INDTIPO, GD90_ID_GD90RIF, GD90_ID_GD90ANNULLA, "
                           "GD90_INDAPERTA FROM GD90_OPERAZIONI ORDER BY GD90_ID"));
        for (int row = 0; row < all->recordCount(); ++row)
            ops << QStringLiteral("%1/%2/%3/%4/%5")
                       .arg(all->valueAt(row, 0).toString(), all->valueAt(row, 1).toString(),
                            all->valueAt(row, 2).toString(), all->valueAt(row, 3).toString(),
                            all->valueAt(row, 4).toString());
        return ops;
    }
    // The journal's rows of the newest operation, as "table action key", in the order written.
    QStringList righeUltimaOperazione()
    {
        QStringList rows;
        const db::RecordsetPtr all = host.database().connection()->openRecordset(QStringLiteral(
            "SELECT GD91_TABELLA, GD91_AZIONE, GD91_CHIAVE FROM GD91_RIGHESTORICO "
            "WHERE GD91_ID_GD90 = (SELECT MAX(GD90_ID) FROM GD90_OPERAZIONI) ORDER BY GD91_TABELLA, GD91_CHIAVE"));
        for (int row = 0; row < all->recordCount(); ++row)
            rows << QStringLiteral("%1 %2 %3")
                        .arg(all->valueAt(row, 0).toString(), all->valueAt(row, 1).toString(),
                             all->valueAt(row, 2).toString());
        return rows;
    }
    bool abilitato(const QString &button) { return control<QPushButton>(button)->isEnabled(); }
    void rimuovi(int code, std::initializer_list<int> answers = {})
    {
        focalizza(code);
        host.log().answerNext(answers);
        premi(QStringLiteral("CMD_REMANAGR"));
    }
    void scriviData(int code, const QString &column, const QString &text)
    {
        focalizza(code);
        albero()->editCell(albero()->focusedNode(), column);
        auto *editor = albero()->view()->viewport()->findChild<fw::TreeListDateEditor *>();
        QVERIFY(editor);
        editor->setText(text);
        QTest::keyClick(editor, Qt::Key_Return);
        attendi();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    // A text read in SQLite's own dialect, untranslated (the journal's JSON functions).
    QString testo(const QString &sql)
    {
        dbsetup::SqliteFile file(host.database().path(), dbsetup::SqliteFile::Access::ReadOnly);
        dbsetup::SqliteStatement statement = file.prepare(sql);
        return statement.step() ? statement.columnText(0) : QString();
    }
    // Another program's write, on a connection of its own that knows nothing of the editor.
    void altroProgramma(const QString &sql)
    {
        dbsetup::SqliteFile other(host.database().path());
        other.exec(sql);
    }

    qint64 a01 = 0, n10 = 0, n11 = 0, n12 = 0, n13 = 0, n14 = 0, n15 = 0, n16 = 0;
};

// With DISTINTA_SHOTS_DIR set, a picture of the widget is saved there under name.
inline void foto(QWidget *widget, const QString &name)
{
    const QString folder = qEnvironmentVariable("DISTINTA_SHOTS_DIR");
    if (folder.isEmpty())
        return;
    QCoreApplication::processEvents();
    QVERIFY(widget->grab().save(QDir(folder).filePath(name)));
}
