#pragma once

#include "platform/db/recordset.h"

#include <QObject>

class FormFrame;
class QWidget;

namespace fw {
class RecordsetGroupGrid;
}

namespace distinta {

class Albero;

// The off-invoice conditions that reach the focused node, GRD_PREMI: contracts' bonuses and
// promotional activities given to the node itself, or to its subject over a period that overlaps
// the node's. Grouped by kind of condition; a double click opens the contract in the suite.
class PaginaCondizioni : public QObject
{
    Q_OBJECT

public:
    PaginaCondizioni(FormFrame &form, Albero &albero);

    QWidget *pagina() const { return m_pagina; }
    QWidget *griglia() const;
    db::RecordsetPtr condizioniFuoriFattura() const { return m_condizioniFuoriFattura; }

    void CaricaCondizioniFuoriFattura();
    void InvocaContratti();
    void svuota();

private:
    void ConfiguraGRD_PREMI();

    FormFrame &m_form;
    Albero &m_albero;
    QWidget *m_pagina;
    fw::RecordsetGroupGrid *GRD_PREMI;
    db::RecordsetPtr m_condizioniFuoriFattura;
};

} // namespace distinta
