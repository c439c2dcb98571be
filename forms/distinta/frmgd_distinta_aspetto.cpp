// What each user leaves of the editor's layout (the tree's column widths and the two splitters)
// comes back the next time the editor opens; the tree's columns stay readable whatever the
// width: none is narrower than its heading and a whole value.
#include "forms/distinta/frmgd_distinta.h"

#include "framework/globalservices.h"
#include "framework/layoutmemory.h"
#include "framework/treelist/treelist.h"

#include <optional>

namespace {

const QString nomeFinestra = QStringLiteral("FRMGD_DISTINTA");
const QString nomeAlbero = QStringLiteral("TVW_DISTINTA");

std::optional<QString> &fileAspettoImpostato()
{
    static std::optional<QString> file;
    return file;
}

} // namespace

QString FRMGD_DISTINTA::fileAspetto()
{
    return fileAspettoImpostato().value_or(fw::LayoutMemory::defaultSettingsFile());
}

// Tests and tools keep their layouts apart from the user's; an empty name keeps nothing.
void FRMGD_DISTINTA::impostaFileAspetto(const QString &file)
{
    fileAspettoImpostato() = file;
}

// Whole values of the columns whose kind does not say how wide they are.
void FRMGD_DISTINTA::collegaUsabilita()
{
    TVW_DISTINTA->setColumnWidthSample(QStringLiteral("trGD02_CLIFOR_CG44"), QStringLiteral("9999999"));
    TVW_DISTINTA->setColumnWidthSample(QStringLiteral("RagioneSociale"), QStringLiteral("Salumeria Rossi & Bianchi S.n.c."));
    TVW_DISTINTA->setColumnWidthSample(QStringLiteral("trGD02_CLIFORFATT_CG44"), QStringLiteral("9999999"));
    TVW_DISTINTA->setColumnWidthSample(QStringLiteral("RagioneSocialeFatt"), QStringLiteral("Commerciale Rossi Srl"));
    TVW_DISTINTA->setColumnWidthSample(QStringLiteral("trGD02_DESCR"), QStringLiteral("Descrizione breve"));
    TVW_DISTINTA->setColumnWidthSample(QStringLiteral("trGD02_IDSTRUTTURA_LP09"), QStringLiteral("Priorità 99"));
    TVW_DISTINTA->setColumnWidthSample(QStringLiteral("trGD02_IDLOCALIZZATA_LP09"), QStringLiteral("Priorità 99"));
    collegaFiltroAnagrafiche();
    impostaTastiera();
    impostaIndicazioniVuote();
}

void FRMGD_DISTINTA::ripristinaAspetto()
{
    const fw::GlobalServices *services = globals();
    fw::LayoutMemory memoria(fileAspetto(), services ? services->user() : QString(), nomeFinestra);
    QStringList colonne;
    for (const auto &[nome, larghezza] : TVW_DISTINTA->designWidths())
        colonne << nome;
    TVW_DISTINTA->setDesignWidths(memoria.columnWidths(nomeAlbero, colonne));
    const QList<double> quote = memoria.splitterShares();
    if (quote.size() == 2) {
        m_quotaGestione = quote.at(0);
        m_quotaDistinta = quote.at(1);
        SplitterReposition();
    }
}

void FRMGD_DISTINTA::registraAspetto()
{
    const fw::GlobalServices *services = globals();
    fw::LayoutMemory memoria(fileAspetto(), services ? services->user() : QString(), nomeFinestra);
    memoria.rememberColumnWidths(nomeAlbero, TVW_DISTINTA->designWidths());
    memoria.rememberSplitterShares({m_quotaGestione, m_quotaDistinta});
}
