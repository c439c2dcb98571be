#pragma once

#include <QObject>
#include <QVariant>

class FormFrame;
class QLineEdit;

namespace fw {
class TreeListNode;
}

namespace distinta {

class Albero;
class Verifica;

// Editing a node in the tree's cells. Every commit of a cell checks the node as it would be
// saved (its period, its other links, its priorities) before anything is written; a refusal is
// told to the user and the cell keeps the stored value. The billing rule decides whether a
// billing code is kept on the node: only "Manuale" keeps one, typed in TXT_ALFA laid over its
// cell (Enter stores it, Escape or leaving the field drops what was typed).
class ModificaNodo : public QObject
{
    Q_OBJECT

public:
    // Why the billing-code editor opens: a filled code edited, or "Manuale" chosen.
    enum class Apertura { Anagrafica, Tendina };

    ModificaNodo(FormFrame &form, Albero &albero, Verifica &verifica);

    QString DescrizionePrioritaDigitata(const QString &codice);
    void GestioneTXTAnagrafica(Apertura apertura);
    // The billing-code editor closes when the focus moves to another node.
    void chiudiEditorCodice();

private:
    bool TVW_DISTINTA_OnEdited(const fw::TreeListNode &node, const QString &column, const QVariant &value, bool valid);
    void TVW_DISTINTA_OnValidateEdit(const fw::TreeListNode &node, const QString &column, QVariant &value, bool &accept,
                                     QString &error);
    void TVW_DISTINTA_OnEditing(const fw::TreeListNode &node, const QString &column, bool &allow);
    void TVW_DISTINTA_OnEditCloseUp(const fw::TreeListNode &node, const QString &column, const QVariant &value);
    void azzeraCodiceFatturazione(const fw::TreeListNode &node);
    void creaTXT_ALFA();
    void TXT_ALFA_Invio();
    void TXT_ALFA_Annulla();

    FormFrame &m_form;
    Albero &m_albero;
    Verifica &m_verifica;
    QLineEdit *TXT_ALFA = nullptr;
    qint64 m_idNodoTXT_ALFA = 0;      // the node the billing-code editor opened on
    bool m_messaggioTXT_ALFA = false; // a message of its own takes the focus from it
};

} // namespace distinta
