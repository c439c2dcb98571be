#pragma once

#include "platform/db/field.h"

#include <QVariant>
#include <memory>
#include <optional>

class FormFrame;
class QTableWidget;
class QWidget;

namespace fw {
class ColumnFit;
class EmptyViewHint;
} // namespace fw

namespace distinta {

class Albero;
class ParametriModulo;

// The master-data sheet of the focused subject, GRD_DATIANAGRAFICI: one line per column of the
// subject's statement, its name and its value. The groups of lines follow the parameters'
// display switches; with a division chosen, the division's own payment terms, agent and
// classifications replace the subject's general ones.
class PaginaDatiAnagrafici
{
public:
    PaginaDatiAnagrafici(FormFrame &form, Albero &albero, const ParametriModulo &parametri);
    ~PaginaDatiAnagrafici();

    QWidget *pagina() const { return m_pagina; }
    QTableWidget *griglia() const { return GRD_DATIANAGRAFICI; }
    // Whose master data the sheet shows; none once emptied.
    std::optional<qint64> soggettoCaricato() const { return m_ultimoSoggetto; }

    void CaricaCondizioniCliente(double codice);
    // The display text of a value of the sheet, by the field's type and scale.
    static QString CaricaDatiAnagrafici(const db::FieldInfo &field, const QVariant &value);
    // Forgets the subject shown, so that the next load reads it again.
    void SvuotaFlex();

private:
    FormFrame &m_form;
    Albero &m_albero;
    const ParametriModulo &m_parametri;
    QWidget *m_pagina;
    QTableWidget *GRD_DATIANAGRAFICI;
    fw::ColumnFit *m_larghezze;
    std::optional<qint64> m_ultimoSoggetto;
    std::unique_ptr<fw::EmptyViewHint> m_vuoto;
};

} // namespace distinta
