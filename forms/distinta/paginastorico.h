#pragma once

#include "forms/distinta/modellostorico.h"
#include "framework/export/exportfile.h"

#include <QObject>

class FormFrame;
class QCheckBox;
class QTableView;
class QToolButton;
class QWidget;

namespace distinta {

class Albero;

// The "Storico" page under the tree, GRD_STORICO: what changed on the focused node, newest
// first, who changed it and with which operation; CHK_STORICOSOGGETTO widens it to the node's
// subject in every classification. Read-only: the page writes nothing.
class PaginaStorico : public QObject
{
    Q_OBJECT

public:
    PaginaStorico(FormFrame &form, Albero &albero);

    QWidget *pagina() const { return m_pagina; }
    QTableView *griglia() const { return GRD_STORICO; }
    QCheckBox *soggetto() const { return CHK_STORICOSOGGETTO; }
    const ModelloStorico &modello() const { return m_modello; }

    // The focused node's history (or its subject's, with the switch on).
    void CaricaStorico();
    void svuota();
    void CMD_SALVASTORICO_Click(fw::ExportFile::Format formato);

private:
    FormFrame &m_form;
    Albero &m_albero;
    QWidget *m_pagina;
    QCheckBox *CHK_STORICOSOGGETTO;
    QToolButton *CMD_SALVASTORICO;
    QTableView *GRD_STORICO;
    ModelloStorico m_modello;
};

} // namespace distinta
