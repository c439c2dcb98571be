#include "forms/distinta/aspetto.h"

#include "forms/distinta/albero.h"
#include "frame/formframe.h"
#include "framework/globalservices.h"
#include "framework/layoutmemory.h"
#include "framework/treelist/treelist.h"

#include <QSplitter>
#include <optional>

namespace distinta {

namespace {

const QString nomeFinestra = QStringLiteral("FRMGD_DISTINTA");
const QString nomeAlbero = QStringLiteral("TVW_DISTINTA");

std::optional<QString> &fileAspettoImpostato()
{
    static std::optional<QString> file;
    return file;
}

QSplitter *splitter(Qt::Orientation orientation, const QString &name)
{
    auto *splitter = new QSplitter(orientation);
    splitter->setObjectName(name);
    return splitter;
}

} // namespace

Aspetto::Aspetto(FormFrame &form, Albero &albero)
    : m_form(form)
    , m_albero(albero)
    , SPLITTERVerticale(splitter(Qt::Horizontal, QStringLiteral("SPLITTERVerticale")))
    , SPLITTERorizzontale(splitter(Qt::Vertical, QStringLiteral("SPLITTERorizzontale")))
{ }

QString Aspetto::fileAspetto()
{
    return fileAspettoImpostato().value_or(fw::LayoutMemory::defaultSettingsFile());
}

void Aspetto::impostaFileAspetto(const QString &file)
{
    fileAspettoImpostato() = file;
}

void Aspetto::SplitterSetup()
{
    SPLITTERVerticale->setChildrenCollapsible(false);
    SPLITTERorizzontale->setChildrenCollapsible(false);
    SPLITTERVerticale->setStretchFactor(1, 1);
    SPLITTERorizzontale->setStretchFactor(0, 1);
    connect(SPLITTERVerticale, &QSplitter::splitterMoved, this, &Aspetto::registraPosizioneSplitter);
    connect(SPLITTERorizzontale, &QSplitter::splitterMoved, this, &Aspetto::registraPosizioneSplitter);
    SplitterReposition();
}

void Aspetto::registraPosizioneSplitter()
{
    const QList<int> across = SPLITTERVerticale->sizes();
    if (across.size() == 2 && across.at(0) + across.at(1) > 0)
        m_quotaGestione = double(across.at(0)) / (across.at(0) + across.at(1));
    const QList<int> down = SPLITTERorizzontale->sizes();
    if (down.size() == 2 && down.at(0) + down.at(1) > 0)
        m_quotaDistinta = double(down.at(0)) / (down.at(0) + down.at(1));
}

void Aspetto::SplitterReposition()
{
    const auto place = [](QSplitter *splitter, double share) {
        const int total = (splitter->orientation() == Qt::Horizontal ? splitter->width() : splitter->height())
            - splitter->handleWidth();
        if (total <= 0)
            return;
        const int first = int(total * share);
        splitter->setSizes({first, total - first});
    };
    place(SPLITTERVerticale, m_quotaGestione);
    place(SPLITTERorizzontale, m_quotaDistinta);
}

void Aspetto::ripristinaAspetto()
{
    const fw::GlobalServices *services = m_form.globals();
    fw::LayoutMemory memoria(fileAspetto(), services ? services->user() : QString(), nomeFinestra);
    fw::TreeList *tree = m_albero.widget();
    QStringList colonne;
    for (const auto &[nome, larghezza] : tree->designWidths())
        colonne << nome;
    tree->setDesignWidths(memoria.columnWidths(nomeAlbero, colonne));
    const QList<double> quote = memoria.splitterShares();
    if (quote.size() == 2) {
        m_quotaGestione = quote.at(0);
        m_quotaDistinta = quote.at(1);
        SplitterReposition();
    }
}

void Aspetto::registraAspetto()
{
    const fw::GlobalServices *services = m_form.globals();
    fw::LayoutMemory memoria(fileAspetto(), services ? services->user() : QString(), nomeFinestra);
    memoria.rememberColumnWidths(nomeAlbero, m_albero.widget()->designWidths());
    memoria.rememberSplitterShares({m_quotaGestione, m_quotaDistinta});
}

} // namespace distinta
