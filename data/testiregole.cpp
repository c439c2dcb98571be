#include "data/testiregole.h"

#include <QVariant>

namespace testiregole {

const QStringList &regoleFatturazione()
{
    static const QStringList texts {QStringLiteral("Codice anagrafico"), QStringLiteral("Cli per fatt."),
                                    QStringLiteral("Nodo padre"), QStringLiteral("Cli per fatt. del nodo padre"),
                                    QStringLiteral("Manuale")};
    return texts;
}

const QStringList &regolePromozioni()
{
    static const QStringList texts {QStringLiteral("Eredita da capostipite"), QStringLiteral("Eredita dal padre"),
                                    QStringLiteral("Specifiche per anagrafica")};
    return texts;
}

const QStringList &regolePromozioniNodo()
{
    static const QStringList texts {QStringLiteral("Eredita da capostipite"), QStringLiteral("Eredita dal padre"),
                                    QStringLiteral("Specifica per Cli/For Distinta")};
    return texts;
}

const QStringList &caricamentoDate()
{
    static const QStringList texts {QStringLiteral("Valorizza da nodo padre"),
                                    QStringLiteral("Valorizza da date fisse")};
    return texts;
}

QString testo(const QStringList &regole, const QVariant &codice)
{
    if (codice.isNull() || !codice.isValid())
        return {};
    bool ok = false;
    const int index = codice.toInt(&ok);
    return ok && index >= 0 && index < regole.size() ? regole.at(index) : codice.toString();
}

} // namespace testiregole
