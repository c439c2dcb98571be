#pragma once

#include <QDate>
#include <QDateTime>
#include <QJsonObject>
#include <QList>
#include <QString>
#include <QVariant>
#include <optional>

// Statements of the journal: the operation that groups one action's changes (GD90_OPERAZIONI),
// the rows the triggers recorded for it (GD91_RIGHESTORICO), and the writes that undo them.
namespace storicostatements {

inline constexpr const char *OperationsTable = "GD90_OPERAZIONI";

// What an operation is: GD90_INDTIPO.
enum class TipoOperazione { Azione = 0, Annullamento = 1, Ripristino = 2 };

struct Operazione
{
    int company = 0;
    std::optional<qint64> typeId; // none for the parameters of a company
    QString name;                 // "Inserimento", "Eliminazione", ...
    QString description;
    QString user;
    QString userGroup;
    QString computer;
    TipoOperazione kind = TipoOperazione::Azione;
    std::optional<qint64> reverses; // the operation an undo or a redo reverses
    // SQLite: the row says "open" while its transaction runs (the triggers look for it);
    // SQL Server: the session context says it, and the row is written closed.
    bool open = true;
};

QString insertOperationStatement(const Operazione &operation);
// Reads nothing, but fails when the journal's rows have no table to go to.
QString journalProbeQuery();
// SQL Server only: the operation the triggers of this session record into; none clears it.
QString sessionOperationStatement(std::optional<qint64> operationId);
QString closeOperationStatement(qint64 operationId);
// An operation that recorded nothing is not kept.
QString dropEmptyOperationStatement(qint64 operationId);

// Marks the operation as reversed by another; changes no row when something reversed it first.
QString markReversedStatement(qint64 operationId, qint64 reversedBy);

// GD91_ID, GD91_TABELLA, GD91_AZIONE, GD91_CHIAVE, GD91_PRIMA, GD91_DOPO in the order written.
QString operationRowsQuery(qint64 operationId);
// GD90_ID, GD90_OPERAZIONE, GD90_DESCR, GD90_INDTIPO, GD90_ID_GD90RIF, GD90_ID_GD90ANNULLA,
// GD90_UTENTE, GD90_DATAORA of one operation.
QString operationQuery(qint64 operationId);
// The user's newest operation on the classification that stands (an action or a redo not
// reversed since): what Ctrl+Z undoes.
QString lastUndoableQuery(const QString &user, int company, qint64 typeId);
// The user's newest action, or undo not reversed since, on the classification: an undo is what
// Ctrl+Y redoes; an action means there is nothing to redo.
QString lastRedoCandidateQuery(const QString &user, int company, qint64 typeId);
// GD91_TABELLA, GD91_CHIAVE of every row an operation recorded.
QString recordedKeysQuery(qint64 operationId);

// --- reading the history: every query gives the columns of historyColumns(), newest first.
// A node's rows: its own, its campaigns' and its workflow state's (by guid those that lost
// their node id: a state removed with its node).
QString nodeHistoryQuery(int company, qint64 nodeId, const QString &nodeGuid);
// The rows of every node that ever linked the subject, in any classification of the company.
QString subjectHistoryQuery(int company, int subjectKind, qint64 subjectCode);
// The rows of a classification written from one day to another (both included); a user and an
// operation's name narrow it when given.
struct FiltroStorico
{
    int company = 0;
    qint64 typeId = 0;
    QDate from;
    QDate to;
    QString user;
    QString operation;
};
QString classificationHistoryQuery(const FiltroStorico &filter);

// The links of a classification valid on a day (start <= day <= end; a missing date leaves its
// side open): GD02_ID, GD02_CLIFOR_CG44, GD02_DATAINIZIOVAL, GD02_DATAFINEVAL, and CodicePadre,
// the parent's subject.
QString linksValidOnQuery(int company, qint64 typeId, const QDate &day);
// The links valid on one of two days and not on the other (a <= b), with the same columns and
// SoloPrimo, 1 for a link valid on a only: what the comparison of the two days is made of, without
// reading the links valid on both.
QString linksValidOnOneDayQuery(int company, qint64 typeId, const QDate &a, const QDate &b);

// Names of what the journal keeps as codes.
QString subjectNameQuery(int company, int subjectKind, qint64 subjectCode);
QString nodeSubjectQuery(qint64 nodeId);
QString priorityNameQuery(qint64 priorityId);
QString campaignNameQuery(qint64 campaignId);
QString stateNameQuery(qint64 stateId);

// A row of one of the journaled tables, as the journal keeps it: column name -> value.
struct Riga
{
    QString table;
    QList<std::pair<QString, QVariant>> values; // in the table's column order
};

// The key column of a journaled table (GD03_PARAMETRI is keyed by its company).
QString keyColumn(const QString &table);
// The generated key of the table is written as it was (SQL Server needs IDENTITY_INSERT).
bool hasGeneratedKey(const QString &table);
// DATETIME columns are written as CONVERT(DateTime, ..., 103) stamps.
bool isDateColumn(const QString &column);
// An update's after-image as the row stood after it. On SQLite the journal keeps there only the
// columns the update changed, without the change stamp; the columns that name the row are in the
// before-image, unchanged. An image that is already whole comes back as it is.
QJsonObject wholeAfterImage(const QJsonObject &before, QJsonObject after);

// The rows of many keys at once (a few hundred per statement).
QString selectRowsQuery(const QString &table, const QList<qint64> &keys);
// Rows of one table with the same columns, in one statement.
QString insertRowsStatement(const QList<Riga> &rows);
QString updateRowStatement(const Riga &row, qint64 key);
QString deleteRowsStatement(const QString &table, const QList<qint64> &keys);
// Of the subjects given, those linked now in some classification of the company.
QString linkedSubjectsQuery(int company, int subjectKind, const QList<qint64> &subjectCodes);
// Of the nodes given, those that a contract's condition reaches.
QString nodesWithConditionsQuery(const QList<qint64> &nodeIds);
// SQL Server: writing a generated key needs IDENTITY_INSERT, which needs ALTER on the table.
QString identityInsertStatement(const QString &table, bool on);
QString identityInsertPermissionQuery(const QString &table);

} // namespace storicostatements
