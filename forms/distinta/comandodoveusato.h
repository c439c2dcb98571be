#pragma once

#include "forms/distinta/finestradoveusato.h"

#include <QObject>
#include <QPointer>

class FormFrame;

namespace distinta {

// "Dove è usato", from the tree's menu or the subject list's: the subject's links in every
// classification of the company, read once and shown in FRMGD_DOVEUSATO. A line chosen there
// goes to the editor as its classification's key, its node and the subject.
class ComandoDoveUsato : public QObject
{
    Q_OBJECT

public:
    explicit ComandoDoveUsato(FormFrame &form);

    FinestraDoveUsato *finestra() const { return m_finestra; }

    // One window at a time: another subject's replaces it.
    void mnuDoveUsato_Click(int subjectKind, qint64 subjectCode);

signals:
    void nodoRichiesto(const QString &chiaveTipo, qint64 idNodo, qint64 subjectCode);

private:
    FormFrame &m_form;
    QPointer<FinestraDoveUsato> m_finestra;
};

} // namespace distinta
