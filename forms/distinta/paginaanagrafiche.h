#pragma once

#include "platform/db/connection.h"
#include "platform/db/recordset.h"

#include <QObject>
#include <QPointer>

class FormFrame;
class QLabel;
class QAction;
class QLineEdit;
class QMenu;
class QPoint;
class QPushButton;
class QTabWidget;
class QWidget;

namespace fw {
class EmptyViewHint;
class RecordsetGrid;
} // namespace fw

namespace distinta {

class Albero;
class Selettore;

// The page "Anagrafiche": every customer or supplier of the company, read from a temporary
// table of the form's connection, with a tick to choose subjects, a flag for those already in a
// classification of the same kind, a filter over code, name and city, the count of ticks, and
// the buttons that add the ticked subjects or remove the focused node.
class PaginaAnagrafiche : public QObject
{
    Q_OBJECT

public:
    PaginaAnagrafiche(FormFrame &form, Selettore &selettore, Albero &albero, QTabWidget *schede);
    ~PaginaAnagrafiche() override;

    QWidget *pagina() const { return m_pagina; }
    QPushButton *aggiungiAlNodo() const { return CMD_ADDANAGR; }
    QPushButton *aggiungiCapostipite() const { return CMD_ADDANAGRCAPO; }
    QPushButton *rimuovi() const { return CMD_REMANAGR; }
    QLineEdit *filtro() const { return TXT_FILTROANAGRAFICHE; }
    fw::RecordsetGrid *griglia() const { return GRD_ANAGRAFICHEDISTINTA; }

    db::RecordsetPtr lista() const { return m_anagrafiche; }
    int selezionati() const { return m_selezionati; }
    QList<QWidget *> ordineTab() const;
    // Lets go of the list and its grid.
    void rilascia();
    // The page is the one showing in the management panel.
    bool mostrata() const;

    void CaricaAnagraficheDistinta();
    void InizializzaQgrid();
    // Dropping a table that is not there is no failure worth a word.
    static void EliminaTabellaTemp(const QString &table, const db::ConnectionPtr &connection);

signals:
    // The ticks were counted again.
    void selezioneCambiata();
    void listaCaricata();
    // "Dove è usato" on a subject of the list.
    void doveUsatoRichiesto(int subjectKind, qint64 subjectCode);

private:
    void GRD_ANAGRAFICHEDISTINTA_HeaderClick(const QString &key);
    void contaSelezionatiPiuTardi();
    void aggiornaConteggio();
    void collegaFiltro();
    // The list's context menu, on the row under the mouse, else on the current row.
    void apriMenuAnagrafiche(const QPoint &pos);

    FormFrame &m_form;
    Selettore &m_selettore;
    Albero &m_albero;
    QTabWidget *m_schede;
    QWidget *m_pagina;
    QPushButton *CMD_ADDANAGR;
    QPushButton *CMD_ADDANAGRCAPO;
    QPushButton *CMD_REMANAGR;
    QLineEdit *TXT_FILTROANAGRAFICHE;
    QLabel *LBL_SELEZIONATI;
    fw::RecordsetGrid *GRD_ANAGRAFICHEDISTINTA;
    QMenu *mnuAnagrafiche;
    QAction *mnuDoveUsatoAnagrafica;
    db::RecordsetPtr m_anagrafiche;
    int m_tipoLista = -1; // the subject kind the list was read for
    bool m_qgridConfigurata = false;
    bool m_selezionaTutti = false;
    bool m_conteggioInAttesa = false;
    int m_selezionati = 0;
    QPointer<fw::EmptyViewHint> m_vuoto; // asks this part for its text: goes with it
};

} // namespace distinta
