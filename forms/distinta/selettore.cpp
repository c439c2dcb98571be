// The selector of classification types: every type of the company under "Clienti" and
// "Fornitori", and the choice of one of them.
#include "forms/distinta/selettore.h"

#include "data/distintastatements.h"
#include "data/stampastatements.h"
#include "frame/formframe.h"
#include "platform/db/recordset.h"

#include <QApplication>
#include <QStyle>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>

namespace distinta {

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

} // namespace

Selettore::Selettore(FormFrame &form)
    : m_form(form)
    , TVW_SELDISTINTE(new QTreeWidget)
{
    TVW_SELDISTINTE->setObjectName(QStringLiteral("TVW_SELDISTINTE"));
    TVW_SELDISTINTE->setHeaderHidden(true);
    TVW_SELDISTINTE->setColumnCount(1);
    TVW_SELDISTINTE->setToolTip(
        QStringLiteral("Distinte della ditta: Invio o un clic apre la distinta, F5 la ricarica"));
    // The selector reacts to the user's clicks only, never to a selection made by the code.
    connect(TVW_SELDISTINTE, &QTreeWidget::itemClicked, this, &Selettore::sceltaDallUtente);
    if (!TVW_SELDISTINTE->style()->styleHint(QStyle::SH_ItemView_ActivateItemOnSingleClick, nullptr, TVW_SELDISTINTE))
        connect(TVW_SELDISTINTE, &QTreeWidget::itemActivated, this, &Selettore::sceltaDallUtente);
}

bool Selettore::costruisci()
{
    const QString procedure = QStringLiteral("Inizializza Distinte");
    TVW_SELDISTINTE->clear();

    QTreeWidgetItem *clienti = aggiungiRadice(QStringLiteral("P0"), m_form.translated(QStringLiteral("Clienti")));
    if (!m_form.step(procedure, [&] { aggiungiTipi(clienti, 0); }))
        return false;
    QTreeWidgetItem *fornitori = aggiungiRadice(QStringLiteral("P1"), m_form.translated(QStringLiteral("Fornitori")));
    if (!m_form.step(procedure, [&] { aggiungiTipi(fornitori, 1); }))
        return false;
    TVW_SELDISTINTE->setCurrentItem(clienti->childCount() > 0 ? clienti->child(0) : fornitori);
    return true;
}

QTreeWidgetItem *Selettore::aggiungiRadice(const QString &key, const QString &text)
{
    auto *root = new QTreeWidgetItem(TVW_SELDISTINTE, {text});
    root->setData(0, Qt::UserRole, key);
    root->setIcon(0, rootIcon());
    root->setExpanded(true);
    TVW_SELDISTINTE->setCurrentItem(root);
    return root;
}

void Selettore::aggiungiTipi(QTreeWidgetItem *root, int subjectKind)
{
    const db::RecordsetPtr types = m_form.connection()->openRecordset(
        distintastatements::typesQuery(m_form.companyCode(), subjectKind));
    const QIcon icon = typeIcon();
    for (types->moveFirst(); !types->eof(); types->moveNext()) {
        const QString text = types->value(QStringLiteral("GD01_CODICE")).toString() + QLatin1Char('-')
            + types->value(QStringLiteral("GD01_DESCR")).toString();
        auto *item = new QTreeWidgetItem(root, {text});
        item->setData(0, Qt::UserRole,
                      chiaveDelTipo(subjectKind, types->value(QStringLiteral("GD01_ID")).toLongLong()));
        item->setData(0, RuoloCodice, types->value(QStringLiteral("GD01_CODICE")).toString());
        item->setData(0, RuoloDescrizione, types->value(QStringLiteral("GD01_DESCR")).toString());
        item->setIcon(0, icon);
    }
}

QTreeWidgetItem *Selettore::voce(const QString &chiave) const
{
    for (QTreeWidgetItemIterator it(TVW_SELDISTINTE); *it; ++it) {
        if ((*it)->data(0, Qt::UserRole).toString() == chiave)
            return *it;
    }
    return nullptr;
}

bool Selettore::scegli(const QString &chiave)
{
    QTreeWidgetItem *item = chiave.isEmpty() ? nullptr : voce(chiave);
    if (item)
        TVW_SELDISTINTE->setCurrentItem(item);
    return item;
}

bool Selettore::scegliPerTesto(const QString &testo)
{
    for (QTreeWidgetItemIterator it(TVW_SELDISTINTE); *it; ++it) {
        if ((*it)->text(0) == testo) {
            TVW_SELDISTINTE->setCurrentItem(*it);
            return true;
        }
    }
    return false;
}

int Selettore::contaNodi() const
{
    int count = 0;
    for (QTreeWidgetItemIterator it(TVW_SELDISTINTE); *it; ++it)
        ++count;
    return count;
}

QString Selettore::chiaveSelezionata() const
{
    const QTreeWidgetItem *selected = TVW_SELDISTINTE->currentItem();
    return selected ? selected->data(0, Qt::UserRole).toString() : QString();
}

bool Selettore::distintaScelta() const
{
    const QString chiave = chiaveSelezionata();
    return !chiave.isEmpty() && !chiave.startsWith(QLatin1Char('P'));
}

QString Selettore::testoSelezionato() const
{
    const QTreeWidgetItem *selected = TVW_SELDISTINTE->currentItem();
    return selected ? selected->text(0) : QString();
}

QString Selettore::codiceSelezionato() const
{
    const QTreeWidgetItem *selected = TVW_SELDISTINTE->currentItem();
    return selected ? selected->data(0, RuoloCodice).toString() : QString();
}

QString Selettore::descrizioneSelezionata() const
{
    const QTreeWidgetItem *selected = TVW_SELDISTINTE->currentItem();
    return selected ? selected->data(0, RuoloDescrizione).toString() : QString();
}

int Selettore::tipoDellaRadice() const
{
    const QTreeWidgetItem *selected = TVW_SELDISTINTE->currentItem();
    if (!selected || !selected->parent())
        return -1;
    return selected->parent()->data(0, Qt::UserRole).toString().mid(1, 1).toInt();
}

QString Selettore::chiaveDelCodice(const QString &codice) const
{
    const db::RecordsetPtr tipo = m_form.connection()->openRecordset(
        stampastatements::typeByCodeQuery(m_form.companyCode(), codice));
    if (tipo->isEmpty())
        return {};
    return chiaveDelTipo(tipo->valueAt(0, tipo->fieldIndex(QStringLiteral("GD01_INDTIPOSOGG"))).toInt(),
                         tipo->valueAt(0, tipo->fieldIndex(QStringLiteral("GD01_ID"))).toLongLong());
}

QString Selettore::chiaveDelTipo(int subjectKind, qint64 typeId)
{
    return (subjectKind == 0 ? QStringLiteral("C") : QStringLiteral("F")) + QString::number(typeId);
}

} // namespace distinta
