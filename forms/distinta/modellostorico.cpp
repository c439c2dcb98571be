#include "forms/distinta/modellostorico.h"

namespace distinta {

void ModelloStorico::imposta(QList<VoceStorico> voci)
{
    beginResetModel();
    m_voci = std::move(voci);
    endResetModel();
}

const VoceStorico *ModelloStorico::voce(int row) const
{
    return row >= 0 && row < m_voci.size() ? &m_voci.at(row) : nullptr;
}

int ModelloStorico::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_voci.size());
}

int ModelloStorico::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : Colonne;
}

QVariant ModelloStorico::data(const QModelIndex &index, int role) const
{
    const VoceStorico *line = voce(index.row());
    if (!line || (role != Qt::DisplayRole && role != Qt::ToolTipRole))
        return {};
    switch (index.column()) {
    case DataOra: return line->dataOra.toString(QStringLiteral("dd/MM/yyyy HH:mm:ss"));
    case Utente: return line->utente;
    case Operazione: return line->operazione;
    case Distinta: return line->distinta;
    case Soggetto: return line->soggetto;
    case Modifica: return line->riga.testo;
    default: return {};
    }
}

QVariant ModelloStorico::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    static const QStringList titoli {QStringLiteral("Data e ora"), QStringLiteral("Utente"),
                                     QStringLiteral("Operazione"), QStringLiteral("Distinta"),
                                     QStringLiteral("Soggetto"),   QStringLiteral("Modifica")};
    return titoli.value(section);
}

} // namespace distinta
