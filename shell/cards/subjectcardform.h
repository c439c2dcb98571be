#pragma once

#include "frame/formframe.h"
#include "platform/db/recordset.h"

#include <optional>

class QLineEdit;

namespace fw {
class RecordsetGrid;
}

// A subject's card, read-only: name, address, city, telephone and payment terms, and the
// classification lists the subject is in with their periods.
class SubjectCardForm : public FormFrame
{
    Q_OBJECT

public:
    explicit SubjectCardForm(int subjectKind, QWidget *parent = nullptr);
    ~SubjectCardForm() override;

    // Shows a subject of a company; before the card is ready the subject waits for it.
    void mostraSoggetto(int company, qint64 subjectCode);

    int subjectKind() const { return m_subjectKind; }
    db::RecordsetPtr distinte() const { return m_distinte; }

protected:
    void loadForm() override;
    bool activateForm() override;
    void release(Release what) override;

private:
    void caricaSoggetto();
    QLineEdit *campo(const QString &name);

    int m_subjectKind;
    std::optional<std::pair<int, qint64>> m_soggetto;
    QLineEdit *txtCodice;
    QLineEdit *txtRagioneSociale;
    QLineEdit *txtIndirizzo;
    QLineEdit *txtCitta;
    QLineEdit *txtTelefono;
    QLineEdit *txtPagamento;
    fw::RecordsetGrid *grdDistinte;
    db::RecordsetPtr m_distinte;
};
