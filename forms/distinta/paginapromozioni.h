#pragma once

#include "platform/db/recordset.h"

#include <QObject>

class FormFrame;
class QComboBox;
class QLineEdit;
class QWidget;

namespace fw {
class RecordsetGrid;
}

namespace distinta {

class Albero;
class Priorita;

// The in-invoice campaigns of the focused node, with its promotion rule CBO_EREPROMO and its
// two price-list priorities. Only a node whose rule is "Specifica per Cli/For Distinta" has a
// list of its own; an inheriting node shows an empty one. The list is a temporary table rebuilt
// at every load; a tick links or unlinks one campaign at once, and the box shows only what the
// database change produced.
class PaginaPromozioni : public QObject
{
    Q_OBJECT

public:
    PaginaPromozioni(FormFrame &form, Albero &albero, Priorita &priorita);
    ~PaginaPromozioni() override;

    QWidget *pagina() const { return m_pagina; }
    QComboBox *regole() const { return CBO_EREPROMO; }
    // The hidden controls that the record frame keeps on the focused node, with their fields.
    QList<std::pair<QWidget *, QString>> controlliLegati() const;
    db::RecordsetPtr promozioni() const { return m_promozioni; }
    QList<QWidget *> ordineTab() const;

    // The three rules in the combo.
    void preparaRegole();
    // The rules that the node may take (a root has no parent to inherit from), or none.
    void mostraNodo(bool radice);
    void svuota();

    void CBO_EREPROMO_ChangeRow();
    void CaricaCondizioniInFattura(qint64 idNodo, short regola);
    void InsertCondizioniInFattura(qint64 idNodo);
    void EliminaCondizioniInFattura();
    void SalvaCondizioniInFattura(qint64 idNodo);
    void Invoca_Promozioni();
    // The parameters form's choice of rule for a node: applied when the node is still the
    // focused one, as if the user had chosen it here.
    void ApplicaEreditaPromozioni(qint64 idNodo, short regola);

private:
    void ConfiguraQRID_PROMO();
    void CBO_EREPROMO_Click();
    bool GRD_PROMO_BeforeColUpdate(int row, const QString &key, const QVariant &before);

    FormFrame &m_form;
    Albero &m_albero;
    Priorita &m_priorita;
    QWidget *m_pagina;
    QComboBox *CBO_EREPROMO;
    QLineEdit *TXT_IDPRIORITA_STRUTTURA;
    QLineEdit *TXT_IDPRIORITA_LOCALIZZATA;
    QLineEdit *TXT_GD02_ID;
    fw::RecordsetGrid *GRD_PROMO;
    db::RecordsetPtr m_promozioni;
    qint64 m_idNodoPromo = 0; // node and rule of the list shown
    short m_regolaPromo = 0;
};

} // namespace distinta
