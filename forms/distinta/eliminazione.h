#pragma once

#include <QObject>

class FormFrame;

namespace distinta {

class Albero;
class ControlliLegami;
class PaginaAnagrafiche;

// Removing the focused node from the classification, after the checks of what hangs on it
// elsewhere in the suite: a definitive bonus forbids it; contracts, bonuses and promotional
// activities of the node and of its direct children are questions the user may answer yes to.
// The database removes the rows below the node when the node's row goes.
class Eliminazione : public QObject
{
    Q_OBJECT

public:
    Eliminazione(FormFrame &form, Albero &albero, ControlliLegami &legami, PaginaAnagrafiche &anagrafiche);

    void CMD_REMANAGR_Click();
    void EliminaCliforDaStruttura();

private:
    FormFrame &m_form;
    Albero &m_albero;
    ControlliLegami &m_legami;
    PaginaAnagrafiche &m_anagrafiche;
};

} // namespace distinta
