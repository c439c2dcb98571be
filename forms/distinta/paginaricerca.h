#pragma once

#include "platform/db/recordset.h"

#include <QObject>
#include <QPointer>

class FormFrame;
class QLineEdit;
class QPushButton;
class QWidget;

namespace fw {
class EmptyViewHint;
class RecordsetGrid;
} // namespace fw

namespace distinta {

// The page "Ricerca": a subject searched across every classification of the company, by code
// or name; "Vai" on a result row asks for the subject's node in its classification.
class PaginaRicerca : public QObject
{
    Q_OBJECT

public:
    explicit PaginaRicerca(FormFrame &form);
    ~PaginaRicerca() override;

    QWidget *pagina() const { return m_pagina; }
    QPushButton *pulsante() const { return CMD_RICERCA; }
    QList<QWidget *> ordineTab() const;
    db::RecordsetPtr risultati() const { return m_risultatiRicerca; }

    void CercaDistinte(const QString &codice, const QString &ragioneSociale);
    // Lets go of the results and their grid.
    void rilascia();

signals:
    // The subject of a result row, in the classification of that text ("CODE-description").
    void nodoRichiesto(int tipoSoggetto, const QString &distinta, const QString &codice);

private:
    void cercaDaCaselle(const QString &procedure);
    void GRD_CERCADISTINTA_ButtonClick(int row, const QString &key);

    FormFrame &m_form;
    QWidget *m_pagina;
    QLineEdit *TXT_CODICE;
    QLineEdit *TXT_RAGIONESOC;
    QPushButton *CMD_RICERCA;
    fw::RecordsetGrid *GRD_CERCADISTINTA;
    db::RecordsetPtr m_risultatiRicerca;
    QPointer<fw::EmptyViewHint> m_vuoto; // asks this part for its text: goes with it
};

} // namespace distinta
