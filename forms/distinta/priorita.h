#pragma once

#include "platform/db/connection.h"

#include <QHash>
#include <QObject>
#include <QVariant>
#include <memory>
#include <optional>

class FormFrame;
class QLineEdit;
struct PrioritaScelta;

namespace fw {
class TreeListNode;
}

namespace distinta {

class Albero;

// The two price-list priorities of the focused node: shown as codes in TXT_PRIORITA_STRUTTURA
// and TXT_PRIORITA_LOCALIZZATA, typed there or picked from the structural priorities (also from
// the buttons of the tree's priority cells), and stored on the node through the bound rows.
class Priorita : public QObject
{
    Q_OBJECT

public:
    Priorita(FormFrame &form, Albero &albero);

    QLineEdit *campoStruttura() const { return TXT_PRIORITA_STRUTTURA; }
    QLineEdit *campoLocalizzata() const { return TXT_PRIORITA_LOCALIZZATA; }

    // Identifier of a priority code, code of an identifier; empty when there is none. A failing
    // lookup is reported and answers empty, with ok false.
    QVariant Get_MG3G_ID_LP09(const db::ConnectionPtr &connection, const QString &codice, bool *ok = nullptr);
    QString Get_LP09_CODICE(const db::ConnectionPtr &connection, const QVariant &idPriorita, bool *ok = nullptr);
    void TVW_DISTINTA_OnEditButtonClick(const fw::TreeListNode &node, const QString &column);
    // Opens the picker on the focused node's priority in campo and waits for it; the priority
    // chosen, none when closed without a choice.
    std::optional<PrioritaScelta> ScegliPriorita(const QString &campo);
    // The codes of the focused node's priorities in the two fields.
    void mostraCodiciPriorita();

private:
    void TXT_PRIORITA_Validate(QLineEdit *field, const QString &campo);
    bool assegnaPriorita(const QString &procedure, const QString &campo, const QVariant &idPriorita);
    QString codicePriorita(const QVariant &idPriorita);
    void segnalaErrorePriorita(const QString &lookup, const std::exception &error, bool *ok);

    FormFrame &m_form;
    Albero &m_albero;
    QLineEdit *TXT_PRIORITA_STRUTTURA;
    QLineEdit *TXT_PRIORITA_LOCALIZZATA;
    QHash<qint64, QString> m_codiciPriorita;         // LP09_CODICE by LP09_ID, for the rows below
    std::weak_ptr<db::Recordset> m_codiciPrioritaDi; // the rows the codes were read for
};

} // namespace distinta
