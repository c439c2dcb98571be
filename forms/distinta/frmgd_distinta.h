#pragma once

#include "frame/formframe.h"

// The classification tree editor, the form that the entry class opens.
//
// Its procedures live in one source file per concern (frmgd_distinta_<concern>.cpp) and are
// declared here; frmgd_distinta.cpp holds the frame's part: life cycle, main record frame and
// company change.
class FRMGD_DISTINTA : public FormFrame
{
    Q_OBJECT

public:
    explicit FRMGD_DISTINTA(QWidget *parent = nullptr);
    ~FRMGD_DISTINTA() override;

    void Form_Initialize();
    void ImpostaFME_DISTINTE();

protected:
    bool activateForm() override;
    QString companyChangeText() const override;
};
