#pragma once

#include <QObject>

class FormFrame;

namespace distinta {

class Albero;
class PaginaAnagrafiche;
class ParametriModulo;
class Verifica;

// Adding the ticked subjects of the list to the classification: under the focused node, or as
// new roots. The period and the billing rule come from the company's parameters, each subject
// is checked before its row is written, and the refused ones are listed at the end.
class Inserimento : public QObject
{
    Q_OBJECT

public:
    Inserimento(FormFrame &form, Albero &albero, PaginaAnagrafiche &anagrafiche, Verifica &verifica,
                const ParametriModulo &parametri);

    void CMD_ADDANAGR_Click();
    void CMD_ADDANAGRCAPO_Click();
    void InserisciNodo(bool &capostipite);

private:
    FormFrame &m_form;
    Albero &m_albero;
    PaginaAnagrafiche &m_anagrafiche;
    Verifica &m_verifica;
    const ParametriModulo &m_parametri;
};

} // namespace distinta
