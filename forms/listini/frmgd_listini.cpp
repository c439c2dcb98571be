#include "forms/listini/frmgd_listini.h"

#include "data/modgd_distinta.h"
#include "data/prioritastatements.h"
#include "framework/recordsetgroupgrid.h"
#include "framework/recordsetgroupmodel.h"

#include <QKeyEvent>
#include <QVBoxLayout>

FRMGD_LISTINI::FRMGD_LISTINI(PrioritaScelta &scelta, const QVariant &current, QWidget *parent)
    : FormFrame(parent)
    , QGRID_LISTINI(new fw::RecordsetGroupGrid(this))
    , m_scelta(scelta)
    , m_prioritaAttuale(current)
{
    setObjectName(QStringLiteral("FRMGD_LISTINI"));
    setWindowTitle(QStringLiteral("Priorità listini"));
    QGRID_LISTINI->setObjectName(QStringLiteral("QGRID_LISTINI"));
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(4, 4, 4, 4);
    layout->addWidget(QGRID_LISTINI);
    connect(QGRID_LISTINI, &fw::RecordsetGroupGrid::rowChosen, this, &FRMGD_LISTINI::QGRID_LISTINI_Choose);
}

FRMGD_LISTINI::~FRMGD_LISTINI() = default;

// 4290 twips high, as designed, and wide enough for its two columns.
void FRMGD_LISTINI::loadForm()
{
    resize(8000 / 15 + 40, 4290 / 15);
}

bool FRMGD_LISTINI::activateForm()
{
    CaricaListini();
    InizializzaScriptLayout();
    QGRID_LISTINI->setFocus();
    return true;
}

void FRMGD_LISTINI::CaricaListini()
{
    QGRID_LISTINI->setRecordset(nullptr);
    m_listini.reset();
    step(QStringLiteral("CaricaListini"),
         [this] { m_listini = connection()->openRecordset(prioritastatements::listiniQuery(companyCode())); });
    InitQGrid();
}

void FRMGD_LISTINI::InitQGrid()
{
    step(QStringLiteral("InitQGrid"), [this] {
        QGRID_LISTINI->setGroupField(QStringLiteral("Priorità"));
        QGRID_LISTINI->setColumns({
            {.key = QStringLiteral("Priorità"), .caption = QString(), .width = 4000},
            {.key = QStringLiteral("Condizione"), .caption = QStringLiteral("Condizione listini"), .width = 4000},
            {.key = QStringLiteral("IDCondizione"), .visible = false},
            {.key = QStringLiteral("IDPriorità"), .visible = false},
            {.key = QStringLiteral("CodicePriorità"), .visible = false},
        });
        QGRID_LISTINI->setRecordset(m_listini);
    });
    mostraPrioritaAttuale();
}

// The heading of the current priority is the current line, so that Enter keeps it.
void FRMGD_LISTINI::mostraPrioritaAttuale()
{
    if (!m_listini || m_prioritaAttuale.isNull())
        return;
    const int id = m_listini->fieldIndex(QStringLiteral("IDPriorità"));
    for (int row = 0; id >= 0 && row < m_listini->recordCount(); ++row) {
        if (m_listini->valueAt(row, id).toLongLong() == m_prioritaAttuale.toLongLong()) {
            const QModelIndex heading = QGRID_LISTINI->groupModel()->indexOfRow(row).parent();
            QGRID_LISTINI->setCurrentIndex(heading);
            QGRID_LISTINI->scrollTo(heading);
            return;
        }
    }
}

// Every row of a group belongs to the same priority: the choice is the group's.
void FRMGD_LISTINI::QGRID_LISTINI_Choose(int row)
{
    if (!m_listini || row < 0 || row >= m_listini->recordCount())
        return;
    const bool chosen = step(QStringLiteral("QGRID_LISTINI_Choose"), [&] {
        m_listini->setCurrentRow(row);
        const QVariant id = m_listini->value(QStringLiteral("IDPriorità"));
        m_scelta.IDPriorita = id.isNull() ? std::nullopt : std::optional<double>(id.toDouble());
        m_scelta.CodicePriorita = MODGD_DISTINTA::NvlStringa(m_listini->value(QStringLiteral("CodicePriorità")));
    });
    if (chosen)
        unload();
}

void FRMGD_LISTINI::release(Release what)
{
    if (what == Release::GridWrapper)
        QGRID_LISTINI->setRecordset(nullptr);
    else if (what == Release::HelperObjects)
        m_listini.reset();
}

void FRMGD_LISTINI::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape) {
        unload();
        return;
    }
    FormFrame::keyPressEvent(event);
}
