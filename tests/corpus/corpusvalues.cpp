#include "corpusvalues.h"

namespace corpus {

using namespace Qt::Literals::StringLiterals;

storicostatements::Operazione operation()
{
    storicostatements::Operazione op;
    op.company = company;
    op.typeId = 1;
    op.name = u"Modifica"_s;
    op.user = u"o'neill"_s;
    op.userGroup = u"ADMIN"_s;
    op.computer = u"PC-UFFICIO3"_s;
    return op;
}

nodistatements::Collegamento linkOf1198(std::optional<qint64> division, std::optional<qint64> excludedNodeId)
{
    return {company, 1198, customers, division, excludedNodeId, QDate(2024, 1, 1), QDate(2024, 12, 31)};
}

nodistatements::NuovoNodo newNode(qint64 typeId, qint64 parentId, qint64 subjectCode, const QDate &start)
{
    nodistatements::NuovoNodo node;
    node.typeId = typeId;
    node.parentId = parentId;
    node.company = company;
    node.subjectKind = customers;
    node.subjectCode = subjectCode;
    node.linkState = 0;
    node.start = start;
    node.end = farEnd;
    node.today = today;
    node.userGroup = u"ADMIN"_s;
    node.user = u"o'neill"_s;
    node.billingRule = 0;
    node.root = parentId == 0;
    return node;
}

nodistatements::NuovoNodo importedNode(qint64 typeId, qint64 parentId, qint64 subjectCode, const QDate &start)
{
    nodistatements::NuovoNodo node = newNode(typeId, parentId, subjectCode, start);
    node.billingCode = 1043;
    node.description = u"Punto vendita dell'Alto Adige"_s;
    node.structurePriority = 1;
    node.localPriority = 0;
    node.promotions = 1;
    return node;
}

} // namespace corpus
