#pragma once

#include <QObject>
#include <QPointer>

class FormFrame;
class FRMGD_ANAGDISTINTA;
class QToolButton;

namespace distinta {

class Selettore;

// Where the editor leads out of itself: the linked managements of the suite, this module's own
// maintenance of classification types, and the master data and card of a subject. The suite's
// components are asked of the host by the names they are registered under.
class Gestioni : public QObject
{
    Q_OBJECT

public:
    Gestioni(FormFrame &form, Selettore &selettore);

    QToolButton *pulsante() const { return CMD_GESTIONICOLLEGATE; }
    // The four linked managements of CMD_GESTIONICOLLEGATE's menu.
    void preparaMenu();

    void CMD_GESTIONICOLLEGATE_Click(const QString &key, const QString &caption);
    FRMGD_ANAGDISTINTA *anagraficaDistinta() const;
    void apriAnagraficaSoggetto(int tipoSoggetto, qint64 codice);
    void RichiamaSchedaClienti(qint64 codice);
    void RichiamaSchedaFornitori(qint64 codice);

signals:
    // The type maintenance closed: types may be new or changed.
    void tipiCambiati();

private:
    void apriAnagraficaDistinta(const QString &caption);
    void anagraficaDistintaChiusa();

    FormFrame &m_form;
    Selettore &m_selettore;
    QToolButton *CMD_GESTIONICOLLEGATE;
    QPointer<FRMGD_ANAGDISTINTA> m_anagraficaDistinta;
};

} // namespace distinta
