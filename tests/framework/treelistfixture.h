#pragma once

#include "framework/treelist/treelist.h"
#include "framework/treelist/treelistmodel.h"
#include "platform/db/connection.h"

#include <QAbstractItemModelTester>
#include <QTemporaryDir>
#include <QTest>
#include <memory>

// A table of nodes in a temporary SQLite file and a tree list over it, with one column of
// each kind. Rows come in SEQ order, so that row order and key order can differ.
struct TreeListFixture
{
    struct Node
    {
        qint64 id;
        QVariant parent; // null for a root
        QString name;
        bool loaded = true;
    };

    QTemporaryDir folder;
    db::ConnectionPtr connection;
    db::RecordsetPtr recordset;
    std::unique_ptr<fw::TreeList> tree;
    std::unique_ptr<QAbstractItemModelTester> tester;

    TreeListFixture()
    {
        connection = db::Connection::open(
            QStringLiteral("Provider=SQLite;Data Source=%1").arg(folder.filePath(QStringLiteral("nodi.sqlite"))));
        connection->execute(
            QStringLiteral("CREATE TABLE NODI (ID INTEGER PRIMARY KEY, PADRE INTEGER NULL, SEQ INTEGER NOT NULL, "
                           "NOME VARCHAR(60) NOT NULL, INIZIO DATETIME NULL, TIPO INTEGER NULL, PRIO INTEGER NULL, "
                           "CARICATO INTEGER NOT NULL)"));
        tree = std::make_unique<fw::TreeList>();
        tree->setBandCaption(QStringLiteral("Dettaglio"));
        using Kind = fw::TreeListColumnKind;
        tree->addColumn({.name = QStringLiteral("trID"),
                         .caption = QStringLiteral("Codice"),
                         .fieldName = QStringLiteral("ID"),
                         .alignment = Qt::AlignRight,
                         .readOnly = true,
                         .inPlaceEditor = false});
        tree->addColumn({.name = QStringLiteral("trNOME"),
                         .caption = QStringLiteral("Nome"),
                         .fieldName = QStringLiteral("NOME"),
                         .designWidth = 300});
        tree->addColumn({.name = QStringLiteral("trINIZIO"),
                         .caption = QStringLiteral("Inizio"),
                         .fieldName = QStringLiteral("INIZIO"),
                         .kind = Kind::Date,
                         .designWidth = 300});
        tree->addColumn({.name = QStringLiteral("trTIPO"),
                         .caption = QStringLiteral("Tipo"),
                         .fieldName = QStringLiteral("TIPO"),
                         .kind = Kind::ImageCombo,
                         .designWidth = 300,
                         .comboItems = {{0, QStringLiteral("Nessuno"), {}},
                                        {1, QStringLiteral("Padre"), {}},
                                        {4, QStringLiteral("Manuale"), {}}}});
        tree->addColumn({.name = QStringLiteral("trPRIO"),
                         .caption = QStringLiteral("Priorità"),
                         .fieldName = QStringLiteral("PRIO"),
                         .kind = Kind::ButtonEdit,
                         .readOnly = true,
                         .designWidth = 300});
        tree->addColumn({.name = QStringLiteral("Nota"),
                         .caption = QStringLiteral("Nota"),
                         .kind = Kind::Unbound,
                         .designWidth = 300});
        tree->setKeyField(QStringLiteral("ID"));
        tree->setParentField(QStringLiteral("PADRE"));
        tester = std::make_unique<QAbstractItemModelTester>(tree->model(),
                                                            QAbstractItemModelTester::FailureReportingMode::QtTest);
    }

    void insert(const QList<Node> &nodes)
    {
        int seq = 0;
        for (const Node &node : nodes) {
            connection->execute(QStringLiteral("INSERT INTO NODI (ID, PADRE, SEQ, NOME, TIPO, CARICATO) "
                                               "VALUES (%1, %2, %3, '%4', 0, %5)")
                                    .arg(node.id)
                                    .arg(node.parent.isNull() ? QStringLiteral("NULL") : node.parent.toString())
                                    .arg(++seq)
                                    .arg(QString(node.name).replace(QLatin1Char('\''), QStringLiteral("''")))
                                    .arg(node.loaded ? 1 : 0));
        }
    }

    void bind()
    {
        recordset = connection->openRecordset(
            QStringLiteral("SELECT ID, PADRE, NOME, INIZIO, TIPO, PRIO FROM NODI WHERE CARICATO = 1 ORDER BY SEQ"));
        tree->setRecordset(recordset);
    }

    fw::TreeListNode node(qint64 id) const
    {
        for (fw::TreeListNode n = tree->firstNode(); n.isValid(); n = n.next()) {
            if (n.value(QStringLiteral("trID")).toLongLong() == id)
                return n;
        }
        return {};
    }

    QVariant stored(const QString &column, int id) const
    {
        auto rs = connection->openRecordset(QStringLiteral("SELECT %1 FROM NODI WHERE ID = %2").arg(column).arg(id));
        return rs->value(0);
    }
};
