#pragma once

#include "frame/formframe.h"
#include "framework/layoutstructures.h"
#include "platform/db/recordset.h"

#include <QPointer>

class FRMGD_DISTINTA;
class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;

namespace fw {
class GridNavigator;
class LookupEdit;
} // namespace fw

// The module parameters of the working company (its one row of GD03_PARAMETRI): how a newly
// linked subject's dates and billing counterpart are chosen, the state a new link takes, and
// which groups of subject data the editor shows. Opened by the tree editor, whose connection it
// works on and whose focused node it can give a promotion-inheritance rule.
class FRMGD_PARAMETRI : public FormFrame, public fw::LayoutStructureSource
{
    Q_OBJECT
    Q_INTERFACES(fw::LayoutStructureSource)

public:
    explicit FRMGD_PARAMETRI(FRMGD_DISTINTA *editor);
    ~FRMGD_PARAMETRI() override;

    void AttivaFrameParametri();
    void CaricaCombo();
    void CMB_GD03_TIPOCARICODATA_Click();
    void CBO_EREPROMO_Click();
    // Shows the rule of the editor's focused node; disabled when there is none.
    void mostraEreditaPromo();
    void LAYSCRIPTMEDIA_OnAddStruttura(fw::LayoutStructureModel &model) override;

protected:
    void loadForm() override;
    bool activateForm() override;
    void formClosing() override;
    bool reportsMissingLogService() const override { return false; }

private:
    void creaControlli();
    void FME_PARAMETRI_AfterAddNew();
    void FME_PARAMETRI_BeforeUpdate(bool &cancel);
    void FME_PARAMETRI_ChangeStatus(int state);
    void abilitaDate();
    void STATO_Lookup();
    void STATO_Decode();
    bool rifiuta(const QString &text, QLineEdit *focus);

    QPointer<FRMGD_DISTINTA> m_editor;
    bool m_inCaricamento = true; // until the first activation is over

    fw::GridNavigator *GRIDNAV_PARAMETRI = nullptr;
    fw::LookupEdit *TXT_GD03_ID_WF02 = nullptr;
    QLabel *lblStato = nullptr;
    QComboBox *CMB_GD03_TIPOCARICODATA = nullptr;
    QLineEdit *TXT_GD03_DATAINIZIOVAL = nullptr;
    QLineEdit *TXT_GD03_DATAFINEVAL = nullptr;
    QComboBox *CMB_GD03_TIPOANAGFATT = nullptr;
    QCheckBox *CHK_GD03_FLG_PROV = nullptr;
    QCheckBox *CHK_GD03_FLG_CONDVEND = nullptr;
    QCheckBox *CHK_GD03_FLG_CLAS = nullptr;
    QCheckBox *CHK_GD03_FLG_ANAG = nullptr;
    QComboBox *CBO_EREPROMO = nullptr;
};
