#pragma once

#include "forms/distinta/verificadistinte.h"

#include <QWidget>

class FormFrame;
class QTableWidget;
class QToolButton;

namespace fw {
class EmptyViewHint;
}

namespace distinta {

// "Verifica distinte": what is wrong in the company's classifications, in a window of its own
// beside the editor. A double click or Enter on a line with a node asks the editor for it.
// Read-only: the findings come from whoever opens it.
class FinestraVerifica : public QWidget
{
    Q_OBJECT

public:
    FinestraVerifica(FormFrame &form, const QString &title);
    ~FinestraVerifica() override;

    void mostra(const QList<Anomalia> &anomalie);
    void CMD_SALVAVERIFICA_Click(fw::ExportFile::Format formato);
    const QList<Anomalia> &anomalie() const { return m_anomalie; }

signals:
    void nodoRichiesto(const distinta::Anomalia &anomalia);

private:
    FormFrame &m_form;
    QString m_title;
    QToolButton *CMD_SALVAVERIFICA;
    QTableWidget *GRD_VERIFICA;
    fw::EmptyViewHint *m_vuoto;
    QList<Anomalia> m_anomalie;
};

} // namespace distinta
