#include "forms/distinta/frmgd_distinta.h"

#include "data/distintastatements.h"
#include "framework/recordframe.h"
#include "framework/recordsetgrid.h"
#include "framework/treelist/treelist.h"

FRMGD_DISTINTA::FRMGD_DISTINTA(QWidget *parent)
    : FormFrame(parent)
{
    setObjectName(QStringLiteral("FRMGD_DISTINTA"));
    creaControlli();
    collegaEventi();
    Form_Initialize();
}

FRMGD_DISTINTA::~FRMGD_DISTINTA() = default;

// Runs once, when the form object is created, before any host object is known.
void FRMGD_DISTINTA::Form_Initialize()
{
}

// The editor's main frame holds no rows of its own: an empty node set with the name column.
void FRMGD_DISTINTA::ImpostaFME_DISTINTE()
{
    step(QStringLiteral("ImpostaFME_DISTINTE"), [this] {
        openRecordFrame(distintastatements::emptyNodeFrameQuery());
    });
}

QString FRMGD_DISTINTA::companyChangeText() const
{
    return QStringLiteral("Cambiando la ditta di lavoro è necessario uscire e rientrare nel programma.");
}

void FRMGD_DISTINTA::release(Release what)
{
    switch (what) {
    case Release::GridWrapper:
        registraAspetto();
        GRD_ANAGRAFICHEDISTINTA->setRecordset(nullptr);
        GRD_CERCADISTINTA->setRecordset(nullptr);
        break;
    case Release::HelperObjects:
        DistruggiFrameworkDistinta();
        TVW_DISTINTA->setRecordset(nullptr);
        m_nodi.reset();
        m_anagrafiche.reset();
        m_risultatiRicerca.reset();
        m_rsParametri.reset();
        break;
    case Release::FrameworkObjects:
        PclsReport.reset();
        break;
    }
}
