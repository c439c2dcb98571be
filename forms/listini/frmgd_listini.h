#pragma once

#include "frame/formframe.h"
#include "platform/db/recordset.h"

#include <QString>
#include <optional>

namespace fw {
class RecordsetGroupGrid;
}

// The priority chosen in FRMGD_LISTINI, read by whoever opened the picker once it has closed.
// The picker writes it only when the user chooses; closing without a choice leaves it as it
// was, so the caller clears it before opening the picker when it needs to tell the two apart.
struct PrioritaScelta
{
    std::optional<double> IDPriorita;
    QString CodicePriorita;
};

// The picker of structural price-list priorities: every structural priority of the company
// with the conditions it ranks, grouped by priority. It opens on the current priority, when
// there is one. Double click or Enter on a row (or on a priority's heading) chooses that
// priority and closes; Escape closes without a choice.
class FRMGD_LISTINI : public FormFrame
{
    Q_OBJECT

public:
    // current: the priority the field holds now (null for none).
    explicit FRMGD_LISTINI(PrioritaScelta &scelta, const QVariant &current = {}, QWidget *parent = nullptr);
    ~FRMGD_LISTINI() override;

    void CaricaListini();
    void InitQGrid();
    void QGRID_LISTINI_Choose(int row);

    db::RecordsetPtr listini() const { return m_listini; }

protected:
    void loadForm() override;
    bool activateForm() override;
    void release(Release what) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void mostraPrioritaAttuale();

    fw::RecordsetGroupGrid *QGRID_LISTINI;
    db::RecordsetPtr m_listini;
    PrioritaScelta &m_scelta;
    QVariant m_prioritaAttuale;
};
