#pragma once

#include "platform/db/recordset.h"

#include <QDate>
#include <QObject>
#include <QSet>
#include <memory>
#include <optional>

class FormFrame;
class QLayout;
class QLineEdit;
class StrutturaNodi;

namespace fw {
class TreeList;
class TreeListNode;
} // namespace fw

namespace distinta {

// The classification as it was on a day, chosen in TXT_DATAVALIDITA: only the links valid that
// day (start <= day <= end, closed at both ends as the overlap check is), with the ancestors
// that carry them even when they were not valid themselves; those are drawn greyed and say so.
// Empty date: every node. The same node statement is read; the rows of other days are set
// aside in memory, so the database sees nothing new.
class AllaData : public QObject
{
    Q_OBJECT

public:
    AllaData(FormFrame &form, fw::TreeList *albero);
    ~AllaData() override;

    QLayout *creaCampo();
    std::optional<QDate> data() const { return m_dataValidita; }
    // The date typed, applied: dataCambiata() asks for the reload. False, with a message and
    // nothing changed, for a text that is no date.
    bool ImpostaDataValidita(const QString &testo);
    // A date set by a run without a window, before the type is chosen.
    void impostaSenzaFinestra(const std::optional<QDate> &giorno);
    // dd/mm/yyyy (a single digit for day or month will do); empty text is no date.
    static std::optional<QDate> leggiDataValidita(const QString &testo, bool *ok);
    // " alla data dd/mm/yyyy" for the header line; empty without a date.
    QString intestazioneData() const;

    // Sets aside the rows not valid on the date; called on every load.
    void filtra(const db::RecordsetPtr &nodi);
    // Shown only as the ancestor of nodes valid on the date.
    bool nodoNonValido(qint64 idNodo) const { return m_nonValidi.contains(idNodo); }
    // Every row read, before the date set some aside; null without a date.
    std::shared_ptr<const StrutturaNodi> struttura() const { return m_struttura; }

signals:
    void dataCambiata();

private:
    void segnaNodoNonValido(const fw::TreeListNode &node, const QString &column, QString &text);
    qint64 idDellaRiga(int row) const;

    FormFrame &m_form;
    fw::TreeList *m_albero;
    QLineEdit *TXT_DATAVALIDITA;
    std::optional<QDate> m_dataValidita;
    bool m_dataInVerifica = false;
    QSet<qint64> m_nonValidi;
    std::weak_ptr<db::Recordset> m_nodi;
    std::shared_ptr<const StrutturaNodi> m_struttura;
};

} // namespace distinta
