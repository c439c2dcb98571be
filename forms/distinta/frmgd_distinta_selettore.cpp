// The selector of classification types: every type of the company under "Clienti" and
// "Fornitori", and the choice of one of them.
#include "forms/distinta/frmgd_distinta.h"

#include "data/distintastatements.h"
#include "framework/treelist/treelist.h"
#include "platform/db/recordset.h"

#include <QApplication>
#include <QStyle>
#include <QTabWidget>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>

namespace {

// A type shows a page while it is not chosen and an open folder once chosen; a root, a folder.
QIcon rootIcon()
{
    return QApplication::style()->standardIcon(QStyle::SP_DirClosedIcon);
}

QIcon typeIcon()
{
    QStyle *style = QApplication::style();
    QIcon icon = style->standardIcon(QStyle::SP_FileIcon);
    for (const QSize &size : icon.availableSizes())
        icon.addPixmap(style->standardIcon(QStyle::SP_DirOpenIcon).pixmap(size), QIcon::Selected);
    return icon;
}

// Restores the pointer however the choice ends.
class WaitCursor
{
public:
    explicit WaitCursor(QWidget *widget) : m_widget(widget) { m_widget->setCursor(Qt::WaitCursor); }
    ~WaitCursor() { m_widget->unsetCursor(); }
    WaitCursor(const WaitCursor &) = delete;
    WaitCursor &operator=(const WaitCursor &) = delete;

private:
    QWidget *m_widget;
};

} // namespace

void FRMGD_DISTINTA::InizializzaDistinte(const QString &chiave)
{
    const QString procedure = QStringLiteral("Inizializza Distinte");
    TVW_SELDISTINTE->clear();

    QTreeWidgetItem *clienti = aggiungiRadice(QStringLiteral("P0"), traduci(QStringLiteral("Clienti")));
    if (!step(procedure, [&] { aggiungiTipi(clienti, QStringLiteral("C"), 0); }))
        return;
    QTreeWidgetItem *fornitori = aggiungiRadice(QStringLiteral("P1"), traduci(QStringLiteral("Fornitori")));
    if (!step(procedure, [&] { aggiungiTipi(fornitori, QStringLiteral("F"), 1); }))
        return;

    // A rebuild keeps the node the user had chosen, as a choice of the user.
    if (QTreeWidgetItem *kept = chiave.isEmpty() ? nullptr : voceSelettore(chiave)) {
        TVW_SELDISTINTE->setCurrentItem(kept);
        TVW_SELDISTINTE_Click();
        return;
    }

    // The second node in insertion order: the first customer type, or "Fornitori" when there is none.
    TVW_SELDISTINTE->setCurrentItem(clienti->childCount() > 0 ? clienti->child(0) : fornitori);
    if (chiaveSelezionata().startsWith(QLatin1Char('P')))
        return;
    if (TAB_VISUALIZZAGESTIONE->currentIndex() == 1)
        CaricaAnagraficheDistinta();
    CaricaDistinta();
}

QTreeWidgetItem *FRMGD_DISTINTA::aggiungiRadice(const QString &key, const QString &text)
{
    auto *root = new QTreeWidgetItem(TVW_SELDISTINTE, {text});
    root->setData(0, Qt::UserRole, key);
    root->setIcon(0, rootIcon());
    root->setExpanded(true);
    TVW_SELDISTINTE->setCurrentItem(root);
    return root;
}

void FRMGD_DISTINTA::aggiungiTipi(QTreeWidgetItem *root, const QString &keyPrefix, int subjectKind)
{
    const db::RecordsetPtr types = connection()->openRecordset(distintastatements::typesQuery(companyCode(), subjectKind));
    const QIcon icon = typeIcon();
    for (types->moveFirst(); !types->eof(); types->moveNext()) {
        const QString text = types->value(QStringLiteral("GD01_CODICE")).toString() + QLatin1Char('-')
                             + types->value(QStringLiteral("GD01_DESCR")).toString();
        auto *item = new QTreeWidgetItem(root, {text});
        item->setData(0, Qt::UserRole, keyPrefix + types->value(QStringLiteral("GD01_ID")).toString());
        item->setIcon(0, icon);
    }
}

QTreeWidgetItem *FRMGD_DISTINTA::voceSelettore(const QString &key) const
{
    for (QTreeWidgetItemIterator it(TVW_SELDISTINTE); *it; ++it) {
        if ((*it)->data(0, Qt::UserRole).toString() == key)
            return *it;
    }
    return nullptr;
}

int FRMGD_DISTINTA::contaNodiSelettore() const
{
    int count = 0;
    for (QTreeWidgetItemIterator it(TVW_SELDISTINTE); *it; ++it)
        ++count;
    return count;
}

QString FRMGD_DISTINTA::chiaveSelezionata() const
{
    const QTreeWidgetItem *selected = TVW_SELDISTINTE->currentItem();
    return selected ? selected->data(0, Qt::UserRole).toString() : QString();
}

void FRMGD_DISTINTA::TVW_SELDISTINTE_Click()
{
    if (contaNodiSelettore() < 3)
        return;
    WaitCursor wait(this);

    const QString key = chiaveSelezionata();
    if (key == QLatin1String("P0") || key.startsWith(QLatin1Char('C')))
        m_tipoSoggetto = 0;
    if (key == QLatin1String("P1") || key.startsWith(QLatin1Char('F')))
        m_tipoSoggetto = 1;

    if (TAB_VISUALIZZAGESTIONE->currentIndex() == 1)
        CaricaAnagraficheDistinta();
    CaricaIntestazioneDistinta();
    CaricaDistinta();
    aggiornaComandi();
    TVW_DISTINTA->setFocus();
}
