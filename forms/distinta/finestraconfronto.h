#pragma once

#include "forms/distinta/confronto.h"

#include <QWidget>

class FormFrame;
class QLineEdit;
class QPushButton;
class QTableWidget;
class QToolButton;

namespace distinta {

// "Confronta date": the differences of the open classification between two days, in a window of
// its own beside the editor. A double click on a line asks the editor for its node. Read-only.
class FinestraConfronto : public QWidget
{
    Q_OBJECT

public:
    // typeId, subjectKind and title: the classification the editor shows.
    FinestraConfronto(FormFrame &form, qint64 typeId, int subjectKind, const QString &title);

    // Compares the two days typed; false, with the reason told, when they cannot be compared.
    bool CMD_ESEGUICONFRONTO_Click();
    void CMD_SALVACONFRONTO_Click(fw::ExportFile::Format formato);
    const QList<Differenza> &differenze() const { return m_differenze; }

signals:
    void nodoRichiesto(qint64 codiceSoggetto);

private:
    void mostra();

    FormFrame &m_form;
    qint64 m_typeId;
    int m_subjectKind;
    QString m_title;
    QLineEdit *TXT_DATAA;
    QLineEdit *TXT_DATAB;
    QPushButton *CMD_ESEGUICONFRONTO;
    QToolButton *CMD_SALVACONFRONTO;
    QTableWidget *GRD_CONFRONTO;
    QList<Differenza> m_differenze;
};

} // namespace distinta
