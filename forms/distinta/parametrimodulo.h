#pragma once

#include "forms/distinta/parametri.h"

#include <QObject>
#include <QPointer>

class FRMGD_DISTINTA;
class FRMGD_PARAMETRI;
class QPushButton;

namespace distinta {

// The company's module parameters as the editor uses them (defaults of new nodes, groups of the
// master-data sheet), and the parameters form opened from "Parametri".
class ParametriModulo : public QObject
{
    Q_OBJECT

public:
    explicit ParametriModulo(FRMGD_DISTINTA &editor);

    QPushButton *pulsante() const { return CMD_PARAMETRI; }
    const Parametri &valori() const { return m_parametri; }

    void CaricaParametri();
    void CMD_PARAMETRI_Click();
    FRMGD_PARAMETRI *formParametri() const;
    // Tells an open parameters form that the focused node changed.
    void nodoCambiato();

signals:
    // The parameters form closed: the values may have changed.
    void parametriChiusi();

private:
    void formChiuso();

    FRMGD_DISTINTA &m_editor;
    QPushButton *CMD_PARAMETRI;
    Parametri m_parametri;
    QPointer<FRMGD_PARAMETRI> m_parametriForm;
};

} // namespace distinta
