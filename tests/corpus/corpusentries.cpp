#include "corpusentries.h"

#include "data/anagdistintastatements.h"
#include "data/anagrafichestatements.h"
#include "data/dettaglistatements.h"
#include "data/distintastatements.h"
#include "data/dittastatements.h"
#include "data/doveusatostatements.h"
#include "data/importazionestatements.h"
#include "data/legamistatements.h"
#include "data/nodistatements.h"
#include "data/parametristatements.h"
#include "data/prioritastatements.h"
#include "data/ricercastatements.h"
#include "data/schedastatements.h"
#include "data/spostamentostatements.h"
#include "data/sqltext.h"
#include "data/stampastatements.h"
#include "data/storicostatements.h"
#include "data/verificastatements.h"
#include "framework/workflowstatements.h"

#include <QDate>
#include <QDateTime>

namespace corpus {

using namespace Qt::Literals::StringLiterals;

namespace {

// The demo database (tests/support/testdatabase.h): company 1 has the types 1 CLI-GDO without
// division, 2 CLI-ALI of division 1 "ALI", 3 CLI-HOR of division 2 "BEV", 4 CLI-EXP with no
// nodes, 5 FOR-MP suppliers with NULL-parent roots and 6 FOR-SRV of division 1; company 2 has type 7.
constexpr int company = 1;
constexpr int smallCompany = 2;
constexpr int customers = 0;
constexpr int suppliers = 1;

constexpr Expectation anything {};
constexpr Expectation someRows {Expectation::SomeRows};
constexpr Expectation noRows {Expectation::NoRows};
constexpr Expectation executes {Expectation::Executes};

constexpr Expectation rows(int count)
{
    return {Expectation::RowCount, count};
}

const QString printKey = u"PC-UFFICIO3mrossi"_s;
const QDate today(2026, 11, 23);
const QDate farEnd(2099, 12, 31);

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

QString subjectListDrop()
{
    return sqltext::dropTempTableStatement(anagrafichestatements::subjectListTable());
}

QString campaignListDrop()
{
    return sqltext::dropTempTableStatement(dettaglistatements::campaignTable());
}

stampastatements::RigaStampa printedNode(int level, qint64 subjectCode, std::optional<QDate> start)
{
    return {printKey, company, 1, level, customers, subjectCode, start, farEnd};
}

legamistatements::NodoCondizioni customerNode()
{
    return {1, customers, 1043, QDate(2024, 3, 1), farEnd};
}

nodistatements::Collegamento linkOf1198(std::optional<qint64> division, std::optional<qint64> excludedNodeId)
{
    return {company, 1198, customers, division, excludedNodeId, QDate(2024, 1, 1), QDate(2024, 12, 31)};
}

// What an import writes besides: the file's billing code, description and priorities.
nodistatements::NuovoNodo importedNode(qint64 typeId, qint64 parentId, qint64 subjectCode, const QDate &start);

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

spostamentostatements::Spostamento move(qint64 nodeId, qint64 oldParentId, qint64 newParentId)
{
    return {company, nodeId, oldParentId, newParentId, QDateTime(today, QTime(10, 30)), u"ADMIN"_s, u"o'neill"_s};
}

const dettaglistatements::GruppiAnagrafica everyGroup {true, true, true};

} // namespace

QList<Entry> entries()
{
    using namespace distintastatements;
    const QString division1 = u"1"_s;
    // A row that has no state record in the demo database until the entries give it one.
    const QString rowGuid = u"6F9619FF-8B86-D011-B42D-00C04FC964FF"_s;
    const QDateTime stateStamp(today, QTime(10, 30, 15));

    return {
        {u"Form_Load (FRMGD_DISTINTA): the empty node record frame"_s, noRows, {}, emptyNodeFrameQuery()},
        {u"Inizializza Distinte: customer types of company 1"_s,
         rows(4),
         {u"GD01_ID"_s, u"GD01_CODICE"_s, u"GD01_DESCR"_s, u"GD01_GUID"_s},
         typesQuery(company, customers)},
        {u"Inizializza Distinte: supplier types of company 1"_s, rows(2), {}, typesQuery(company, suppliers)},
        {u"Inizializza Distinte: customer types of company 2"_s, rows(1), {}, typesQuery(smallCompany, customers)},
        {u"CaricaIntestazioneDistinta: type bound to a division"_s,
         rows(1),
         {u"GD01_IDDIV_CO1A"_s, u"GD01_GUID"_s, u"CO1A_DESCR"_s},
         headerQuery(2)},
        {u"CaricaIntestazioneDistinta: type without division gives no row"_s, noRows, {}, headerQuery(1)},
        {u"CaricaDistinta: nodes of a customer type without division"_s,
         rows(90),
         {u"GD02_ID"_s, u"GD02_IDPARENT_GD02"_s, u"GD02_CLIFOR_CG44"_s, u"RAGIONESOCIALE"_s, u"GD02_DATAINIZIOVAL"_s,
          u"GD02_DATAFINEVAL"_s, u"GD02_INDEREPROMO"_s},
         nodesQuery(company, customers, 1)},
        {u"CaricaDistinta: nodes of a customer type of a division"_s,
         rows(80),
         {u"RAGIONESOCIALE"_s},
         nodesQuery(company, customers, 2)},
        {u"CaricaDistinta: nodes of a supplier type whose roots have a NULL parent"_s,
         rows(60),
         {u"RAGIONESOCIALE"_s},
         nodesQuery(company, suppliers, 5)},
        {u"CaricaDistinta: a type with no nodes"_s, noRows, {}, nodesQuery(company, customers, 4)},
        {u"CaricaDistinta: a root of the selector (\"Clienti\") matches no type"_s,
         noRows,
         {},
         nodesQuery(company, customers, 0)},
        {u"CaricaDistinta: the small company's tree"_s,
         rows(7),
         {u"RAGIONESOCIALE"_s},
         nodesQuery(smallCompany, customers, 7)},
        {u"AssegnaRagioneSociale: business name of a billing subject"_s,
         rows(1),
         {u"CG16_RAGSOANAG"_s},
         businessNameQuery(company, customers, 1001)},
        {u"TVW_DISTINTA_OnCustomDrawCell: description of a price-list priority, identifier quoted"_s,
         rows(1),
         {u"LP09_DESCR"_s},
         priorityDescriptionQuery(2)},

        {u"EliminaTabellaTemp: the subject list's table, before it exists"_s, executes, {}, subjectListDrop()},
        {u"CaricaAnagraficheDistinta: customers of a type without division"_s,
         executes,
         {},
         anagrafichestatements::buildSubjectListStatement(company, customers, std::nullopt)},
        {u"CaricaAnagraficheDistinta: read back the list (every customer once, with its payment terms and place)"_s,
         rows(300),
         {u"Codice"_s, u"Ragione sociale"_s, u"CodPagamento"_s, u"DescPagamento"_s, u"Citta"_s, u"Provincia"_s},
         anagrafichestatements::readSubjectListStatement()},
        {u"EliminaTabellaTemp: the subject list's table, now that it exists"_s, executes, {}, subjectListDrop()},
        {u"CaricaAnagraficheDistinta: customers of a type of division 1, with the division's overrides"_s,
         executes,
         {},
         anagrafichestatements::buildSubjectListStatement(company, customers, 1)},
        {u"CaricaAnagraficheDistinta: read back the division's list (every customer, also those without overrides)"_s,
         rows(300),
         {u"Codice"_s, u"Ragione sociale"_s, u"CodPagamento"_s, u"DescPagamento"_s, u"Citta"_s, u"Provincia"_s},
         anagrafichestatements::readSubjectListStatement()},
        {u"EliminaTabellaTemp: suppliers' list of the small company"_s, executes, {}, subjectListDrop()},
        {u"CaricaAnagraficheDistinta: suppliers of company 2, type without division"_s,
         executes,
         {},
         anagrafichestatements::buildSubjectListStatement(smallCompany, suppliers, std::nullopt)},
        {u"CaricaAnagraficheDistinta: read back the small company's suppliers"_s,
         rows(4),
         {},
         anagrafichestatements::readSubjectListStatement()},

        {u"Form_Activate (FRMGD_DISTINTA): parameter snapshot of company 1"_s,
         rows(1),
         {u"TipoCaricaDATA"_s, u"DataFissaINIZIO"_s, u"DataFissaFINE"_s, u"flg_Anagrafica"_s, u"flg_CondVendita"_s,
          u"flg_Classificazioni"_s, u"flg_Provvigioni"_s, u"TipoCaricaFatt"_s},
         parametristatements::snapshotQuery(company)},
        {u"Form_Activate (FRMGD_DISTINTA): parameter snapshot of a company without parameter row"_s,
         noRows,
         {},
         parametristatements::snapshotQuery(smallCompany)},

        {u"CercaDistinte: both boxes empty gives an empty result"_s,
         noRows,
         {},
         ricercastatements::crossListSearchQuery(company, QString(), QString())},
        {u"CercaDistinte: by code (a customer linked in two trees)"_s,
         rows(2),
         {u"ID"_s, u"DITTA"_s, u"TIPOCF"_s, u"CLIFOR"_s, u"ANAGRAFICA"_s, u"DISTINTA"_s},
         ricercastatements::crossListSearchQuery(company, u"1015"_s, QString())},
        {u"CercaDistinte: by code typed with blanks around it"_s,
         rows(2),
         {u"ANAGRAFICA"_s, u"DISTINTA"_s},
         ricercastatements::crossListSearchQuery(company, u" 1015 "_s, QString())},
        {u"CercaDistinte: by a name with an apostrophe, doubled"_s,
         rows(3),
         {u"ANAGRAFICA"_s, u"DISTINTA"_s},
         ricercastatements::crossListSearchQuery(company, QString(), u"D'Amico"_s)},
        {u"CercaDistinte: by code and name"_s,
         rows(1),
         {u"ANAGRAFICA"_s, u"DISTINTA"_s},
         ricercastatements::crossListSearchQuery(company, u"1009"_s, u"D'Amico"_s)},
        {u"CercaDistinte: a non-numeric code alone lists every node of the company"_s,
         rows(339),
         {u"ID"_s, u"ANAGRAFICA"_s, u"DISTINTA"_s},
         ricercastatements::crossListSearchQuery(company, u"10A1"_s, QString())},
        {u"CercaDistinte: a non-numeric code with a name searches by the name only"_s,
         rows(6),
         {u"ANAGRAFICA"_s, u"DISTINTA"_s},
         ricercastatements::crossListSearchQuery(company, u"10A1"_s, u"Dell'Acqua"_s)},
        {u"CercaDistinte: the small company's nodes only"_s,
         rows(7),
         {u"ANAGRAFICA"_s, u"DISTINTA"_s},
         ricercastatements::crossListSearchQuery(smallCompany, QString(), u"a"_s)},

        {u"CaricaIntestazioneDistinta: supplier type bound to a division"_s,
         rows(1),
         {u"GD01_IDDIV_CO1A"_s, u"GD01_GUID"_s, u"CO1A_DESCR"_s},
         headerQuery(6)},
        {u"CaricaDistinta: nodes of a supplier type of a division"_s,
         rows(40),
         {u"GD02_ID"_s, u"GD02_CLIFOR_CG44"_s, u"RAGIONESOCIALE"_s, u"GD02_DATAINIZIOVAL"_s, u"GD02_DATAFINEVAL"_s},
         nodesQuery(company, suppliers, 6)},
        {u"CaricaDistinta: a supplier type read with the customers' kind gives no node"_s,
         noRows,
         {},
         nodesQuery(company, customers, 6)},
        {u"EliminaTabellaTemp: before the suppliers' list of a division"_s, executes, {}, subjectListDrop()},
        {u"CaricaAnagraficheDistinta: suppliers of a type of division 1, with the division's overrides"_s,
         executes,
         {},
         anagrafichestatements::buildSubjectListStatement(company, suppliers, 1)},
        {u"CaricaAnagraficheDistinta: read back the division's suppliers (every supplier of the company)"_s,
         rows(150),
         {u"Codice"_s, u"Ragione sociale"_s},
         anagrafichestatements::readSubjectListStatement()},
        {u"CercaDistinte: by a supplier's code"_s,
         rows(1),
         {u"ANAGRAFICA"_s, u"DISTINTA"_s},
         ricercastatements::crossListSearchQuery(company, u"5009"_s, QString())},
        {u"CercaDistinte: by a name with an ampersand, customers and suppliers alike"_s,
         rows(68),
         {u"ANAGRAFICA"_s, u"DISTINTA"_s},
         ricercastatements::crossListSearchQuery(company, QString(), u"&"_s)},
        {u"CercaDistinte: a name that no subject has"_s,
         noRows,
         {},
         ricercastatements::crossListSearchQuery(company, QString(), u"Nessuno's"_s)},
        {u"AssegnaRagioneSociale: a billing code with no subject"_s,
         noRows,
         {},
         businessNameQuery(company, customers, 99999)},
        {u"TVW_DISTINTA_OnCustomDrawCell: a priority that no longer exists"_s,
         noRows,
         {},
         priorityDescriptionQuery(999)},

        {u"Stampa (StampaSenzaFinestra): the type named by its code"_s,
         rows(1),
         {u"GD01_ID"_s, u"GD01_INDTIPOSOGG"_s},
         stampastatements::typeByCodeQuery(company, u"CLI-GDO"_s)},
        {u"PulisciStampa: the rows of an earlier print with the same key, in this company"_s,
         executes,
         {},
         stampastatements::deleteWorkRowsStatement(printKey, company)},
        {u"Stampa: a root of CLI-GDO into the work table"_s,
         executes,
         {},
         stampastatements::insertWorkRowStatement(printedNode(0, 1001, QDate(2024, 1, 31)))},
        {u"Stampa: a node two levels down, without a start date"_s,
         executes,
         {},
         stampastatements::insertWorkRowStatement(printedNode(2, 1002, std::nullopt))},
        {u"InvocaStampa: the report's rows, with master data and type"_s,
         rows(2),
         {u"GD04_LIVELLO"_s, u"CG16_RAGSOANAG"_s, u"GD01_CODICE"_s, u"GD04_DATAFINEVAL"_s},
         stampastatements::reportDataQuery(printKey, company)},
        {u"PulisciStampa: clears them again"_s,
         executes,
         {},
         stampastatements::deleteWorkRowsStatement(printKey, company)},

        {u"Shell start-up: whether the working company has any row (company 1 has)"_s,
         rows(1),
         {u"DittaConDati"_s},
         dittastatements::companyHasDataQuery(company)},
        {u"Shell start-up: whether the working company has any row (company 99 has none)"_s,
         rows(1),
         {},
         dittastatements::companyHasDataQuery(99)},

        {u"ImpostaFME_DISTINTE: the record frame of the type maintenance, company 1"_s,
         rows(6),
         {u"GD01_ID"_s, u"GD01_CODICE"_s, u"GD01_GUID"_s},
         anagdistintastatements::typesFrameQuery(company)},
        {u"DIVISIONI_Lookup: the divisions of company 1"_s,
         rows(2),
         {u"CO1A_CODICE"_s, u"CO1A_DESCR"_s},
         anagdistintastatements::divisionLookupQuery(company)},
        {u"DIVISIONI_Decode: a division code, read without the company"_s,
         rows(1),
         {u"CO1A_DESCR"_s},
         anagdistintastatements::divisionDecodeQuery(u"UNI"_s)},
        {u"DIVISIONI_Decode: a typed code with a quote, doubled"_s,
         noRows,
         {},
         anagdistintastatements::divisionDecodeQuery(u"A'LI"_s)},
        {u"DecodeCodiceDivisione: a division code of the company (lines joined by CR LF)"_s,
         rows(1),
         {u"CO1A_IDDIV"_s},
         anagdistintastatements::divisionIdQuery(company, u"BEV"_s)},
        {u"DecodeCodiceDivisione: the division code of another company"_s,
         noRows,
         {},
         anagdistintastatements::divisionIdQuery(company, u"UNI"_s)},
        {u"Get_CodiceDivisione: the code of a stored division (lines joined by CR LF)"_s,
         rows(1),
         {u"CO1A_CODICE"_s},
         anagdistintastatements::divisionCodeQuery(2)},
        {u"Get_MG3G_ID_LP09 (FRMGD_ANAGDISTINTA): the identifier of a priority code"_s,
         rows(1),
         {u"LP09_ID"_s},
         anagdistintastatements::priorityIdQuery(company, u"GDO"_s)},
        {u"Get_LP09_CODICE (FRMGD_ANAGDISTINTA): the code of a priority identifier"_s,
         rows(1),
         {u"LP09_CODICE"_s},
         anagdistintastatements::priorityCodeQuery(2)},
        {u"PRIORITA_Lookup: the price-list priorities of company 1"_s,
         rows(6),
         {u"LP09_CODICE"_s, u"LP09_DESCR"_s},
         anagdistintastatements::priorityLookupQuery(company)},
        {u"PRIORITA_Decode: the description of a priority code of the company"_s,
         rows(1),
         {u"LP09_DESCR"_s},
         anagdistintastatements::priorityDecodeQuery(company, u"STD"_s)},
        {u"GRID_TIPODISTINTA: the text of a division cell"_s,
         rows(1),
         {u"DESCR"_s},
         anagdistintastatements::gridDivisionQuery(company, 1)},
        {u"GRID_TIPODISTINTA: the text of a priority cell"_s,
         rows(1),
         {u"DESCR"_s},
         anagdistintastatements::gridPriorityQuery(2)},
        {u"FME_DISTINTE_BeforeDelete: a type with nodes"_s, rows(90), {}, anagdistintastatements::typeNodesQuery(1)},
        {u"FME_DISTINTE_BeforeDelete: a type without nodes"_s, noRows, {}, anagdistintastatements::typeNodesQuery(4)},
        {u"FME_DISTINTE_ValidateRecord: the code of another type of the company"_s,
         rows(1),
         {u"GD01_DESCR"_s},
         anagdistintastatements::sameCodeQuery(company, u"CLI-GDO"_s, 0)},
        {u"FME_DISTINTE_ValidateRecord: the type's own code"_s,
         noRows,
         {},
         anagdistintastatements::sameCodeQuery(company, u"CLI-GDO"_s, 1)},
        {u"cmdAssegnaStato_Click: the nodes of a type with their guids"_s,
         rows(90),
         {u"GD02_ID"_s, u"gd02_guid"_s},
         anagdistintastatements::typeNodeGuidsQuery(company, 1)},
        {u"GRIDNAV_ButtonClick: the print of the classification types"_s,
         rows(7),
         {u"MO09_CODDIST"_s, u"MO09_TIPOSOGG"_s},
         anagdistintastatements::printQuery()},

        {u"CaricaListini: structural priorities of company 1 with their conditions"_s,
         rows(11),
         {u"Condizione"_s, u"Priorità"_s, u"IDCondizione"_s, u"IDPriorità"_s, u"CodicePriorità"_s},
         prioritastatements::listiniQuery(company)},
        {u"CaricaListini: a company without priorities"_s, noRows, {}, prioritastatements::listiniQuery(3)},
        {u"Get_MG3G_ID_LP09: the identifier of a priority code"_s,
         rows(1),
         {u"LP09_ID"_s},
         prioritastatements::priorityIdQuery(company, u"HOR"_s)},
        {u"Get_MG3G_ID_LP09: a typed code with a quote, doubled"_s,
         noRows,
         {},
         prioritastatements::priorityIdQuery(company, u"H'OR"_s)},
        {u"Get_LP09_CODICE: the code of a priority identifier, unquoted"_s,
         rows(1),
         {u"LP09_CODICE"_s},
         prioritastatements::priorityCodeQuery(3)},

        {u"Subject card: a customer's master data and payment terms"_s,
         rows(1),
         {u"CG44_CLIFOR"_s, u"CG16_RAGSOANAG"_s, u"CG16_CITTA"_s},
         schedastatements::subjectQuery(company, customers, 1001)},
        {u"Subject card: the lists a customer is in (one of the customers in two lists)"_s,
         rows(2),
         {u"GD01_CODICE"_s, u"GD02_DATAINIZIOVAL"_s, u"GD02_DATAFINEVAL"_s},
         schedastatements::listsQuery(company, customers, 1015)},

        {u"ContaFigli: a node with children"_s, rows(1), {}, legamistatements::childCountQuery(company, 3)},
        {u"EliminaCliforDaStruttura: the direct children of a node"_s,
         rows(6),
         {},
         legamistatements::childrenQuery(company, 3)},
        {u"LegamiContratto: a subject with a contract"_s,
         rows(1),
         {},
         legamistatements::contractCountQuery(company, 1043)},
        {u"PremioDefinitivo: the first root of CLI-GDO has a definitive settlement"_s,
         rows(1),
         {},
         legamistatements::definitiveBonusQuery(company, 1, std::nullopt)},
        {u"PremioDefinitivo: no deadline after the end date"_s,
         noRows,
         {},
         legamistatements::definitiveBonusQuery(company, 1, QDate(2024, 12, 31))},
        {u"PremioDefinitivo: the child excluded from the contract's condition"_s,
         noRows,
         {},
         legamistatements::definitiveBonusQuery(company, 2, std::nullopt)},
        {u"LegamiPremiPromoAtt: conditions that reach a node, every division"_s,
         someRows,
         {},
         legamistatements::conditionsQuery(company, customerNode(), QString())},
        {u"LegamiPremiPromoAtt: the same in division 2"_s,
         anything,
         {},
         legamistatements::conditionsQuery(company, customerNode(), u"2"_s)},

        {u"VerificaNodo: the prospective parent"_s, rows(1), {}, nodistatements::parentQuery(company, 3)},
        {u"VerificaNodo: no parent for a root"_s, noRows, {}, nodistatements::parentQuery(company, 0)},
        {u"VerificaNodo: a subject already linked, inserting, every division"_s,
         someRows,
         {},
         nodistatements::overlapQuery(linkOf1198(std::nullopt, std::nullopt))},
        {u"VerificaNodo: editing its own node, division 1"_s,
         anything,
         {},
         nodistatements::overlapQuery(linkOf1198(1, 2))},
        {u"InserisciNodo: a root in CLI-EXP"_s,
         executes,
         {},
         nodistatements::insertStatement(newNode(4, 0, 1300, QDate(2000, 1, 1)))},
        {u"InserisciNodo: a child under a node of CLI-GDO"_s,
         executes,
         {},
         nodistatements::insertStatement(newNode(1, 3, 1299, QDate(2024, 5, 1)))},
        {u"TVW_DISTINTA_OnEdited: a priority code typed in a node"_s,
         rows(1),
         {},
         nodistatements::priorityLookupQuery(u"1"_s)},
        {u"TVW_DISTINTA_OnEdited: a priority code that does not exist"_s,
         noRows,
         {},
         nodistatements::priorityLookupQuery(u"9'9"_s)},
        {u"TVW_DISTINTA_OnChangeNode: the workflow identity of a node"_s,
         rows(1),
         {},
         nodistatements::nodeGuidQuery(company, 3)},
        {u"mnuRilasciaFigli_Click: the workflow identities of a type's nodes"_s,
         someRows,
         {},
         nodistatements::typeGuidsQuery(company, 1)},
        {u"EliminaCliforDaStruttura: a node and, through the database, its subtree"_s,
         executes,
         {},
         legamistatements::deleteNodeStatement(3)},

        {u"CaricaCondizioniCliente: master data of customer 1043, every group, every division"_s,
         rows(1),
         {u"Soggetto"_s, u"CondizioniPagamento"_s, u"MacroArea"_s},
         dettaglistatements::masterDataQuery(company, customers, 1043, everyGroup, QString(), QString())},
        {u"CaricaCondizioniCliente: the subject line only"_s,
         rows(1),
         {u"Soggetto"_s},
         dettaglistatements::masterDataQuery(company, customers, 1043, {}, QString(), QString())},
        {u"CaricaCondizioniCliente: master data of customer 1043 in division 1, with the host's visibility"_s,
         rows(1),
         {u"Soggetto"_s, u"CondizioniPagamento"_s},
         dettaglistatements::masterDataQuery(company, customers, 1043, everyGroup, division1,
                                             u" AND (CO1C_IDDIV_CO1A IS NULL OR CO1C_IDDIV_CO1A IN (1,2))"_s)},
        {u"CaricaCondizioniCliente: a supplier in division 1, without visibility limits"_s,
         anything,
         {},
         dettaglistatements::masterDataQuery(company, suppliers, 2001, everyGroup, division1, QString())},

        {u"CaricaCondizioniInFattura: the node's priorities"_s,
         rows(1),
         {},
         dettaglistatements::nodePrioritiesQuery(1, 1)},
        {u"CaricaCondizioniInFattura: drop the campaign list"_s, executes, {}, campaignListDrop()},
        {u"CaricaCondizioniInFattura: campaign list of a node with campaigns of its own"_s,
         anything,
         {},
         dettaglistatements::buildCampaignListStatement(company, 1, 2)},
        {u"CaricaCondizioniInFattura: read the campaign list"_s,
         someRows,
         {u"MG94_ID"_s, u"MG94_CODCAMP"_s, u"ANNO"_s, u"SELEZ"_s},
         dettaglistatements::readCampaignListStatement()},
        {u"CaricaCondizioniInFattura: drop it again"_s, executes, {}, campaignListDrop()},
        {u"CaricaCondizioniInFattura: an inheriting node's list"_s,
         anything,
         {},
         dettaglistatements::buildCampaignListStatement(company, 1, 0)},
        {u"CaricaCondizioniInFattura: read the empty list"_s,
         noRows,
         {},
         dettaglistatements::readCampaignListStatement()},
        {u"InsertCondizioniInFattura: link a campaign to a node"_s,
         executes,
         {},
         dettaglistatements::insertCampaignLinkStatement(company, 1, 1)},
        {u"EliminaCondizioniInFattura: unlink by link id"_s,
         executes,
         {},
         dettaglistatements::deleteCampaignLinkStatement(1)},
        {u"SalvaCondizioniInFattura: remove every link of a node"_s,
         executes,
         {},
         dettaglistatements::deleteNodeCampaignLinksStatement(company, 1)},

        {u"AttivaFrameParametri: the company's parameters row"_s,
         anything,
         {},
         dettaglistatements::parametersRowQuery(company)},
        {u"STATO_Lookup (FRMGD_PARAMETRI): the link states"_s,
         someRows,
         {},
         dettaglistatements::linkStateLookupQuery()},
        {u"STATO_Decode (FRMGD_PARAMETRI): one state"_s, anything, {}, dettaglistatements::linkStateDecodeQuery(1)},

        {u"SpostaNodo: nodes of CLI-GDO with a definitive bonus"_s,
         anything,
         {},
         spostamentostatements::definitiveBonusNodesQuery(company, 1)},
        {u"SpostaNodo: a node moved under a node, guarded by the parent that was read"_s,
         executes,
         {},
         spostamentostatements::moveStatement(move(2, 1, 1))},
        {u"SpostaNodo: a node made a root, its parent read as none"_s,
         executes,
         {},
         spostamentostatements::moveStatement(move(1, 0, 0))},

        {u"GetStatiFlusso (workflow state service): the states of the classification lists' workflow"_s,
         rows(7),
         {u"WF01_CODICE"_s, u"WF01_DESCR"_s},
         fw::workflowstatements::workflowStatesQuery(u"DISTINTA"_s)},
        {u"GetDefaultFlussoStato (workflow state service): the workflow's default state"_s,
         rows(1),
         {},
         fw::workflowstatements::defaultStateQuery(u"DISTINTA"_s)},
        {u"GetStatoFromGUID (workflow state service): a row without a state"_s,
         noRows,
         {},
         fw::workflowstatements::rowStateQuery(rowGuid)},
        {u"ConfermaStato (workflow state service): the change finds no state record to change"_s,
         executes,
         {},
         fw::workflowstatements::changeStateStatement(rowGuid, 3, stateStamp, u"ADMIN"_s, u"o'neill"_s)},
        {u"ConfermaStato (workflow state service): so the row's state record is created"_s,
         executes,
         {},
         fw::workflowstatements::insertStateStatement(rowGuid, 3, stateStamp, u"ADMIN"_s, u"o'neill"_s)},
        {u"GetDescrizioneStatoFromGUID (workflow state service): the state just stored"_s,
         rows(1),
         {u"WF01_DESCR"_s},
         fw::workflowstatements::stateDescriptionQuery(rowGuid)},
        {u"ConfermaStato (workflow state service): a row with a state record changes state"_s,
         executes,
         {},
         fw::workflowstatements::changeStateStatement(rowGuid, 6, stateStamp, u"ADMIN"_s, u"o'neill"_s)},
        {u"GetStatoFromGUID (workflow state service): the row's state"_s,
         rows(1),
         {},
         fw::workflowstatements::rowStateQuery(rowGuid)},

        // Last: while the operation is open, every write above would be recorded into it.
        {u"OperazioneStorico: the journal's table is there"_s, noRows, {}, storicostatements::journalProbeQuery()},
        {u"OperazioneStorico: an operation opened"_s,
         executes,
         {},
         storicostatements::insertOperationStatement(operation())},
        {u"CMD_ANNULLA_Click: the rows as they stand"_s,
         someRows,
         {u"gd02_guid"_s},
         storicostatements::selectRowsQuery(u"GD02_DISTINTA"_s, {2, 3})},
        {u"CMD_ANNULLA_Click: a row set back"_s,
         executes,
         {},
         storicostatements::updateRowStatement({u"GD02_DISTINTA"_s,
                                                {{u"GD02_DESCR"_s, u"Riga dell'operazione"_s},
                                                 {u"GD02_DATAFINEVAL"_s, QDateTime(QDate(2099, 12, 31), QTime(0, 0))},
                                                 {u"GD02_IDSTRUTTURA_LP09"_s, QVariant()}}},
                                               2)},
        {u"CMD_ANNULLA_Click: rows brought back with their keys"_s,
         executes,
         {},
         storicostatements::insertRowsStatement({{u"GD12_PROMO"_s,
                                                  {{u"GD12_DITTA_CG18"_s, qlonglong(company)},
                                                   {u"GD12_ID"_s, qlonglong(9001)},
                                                   {u"GD12_ID_GD02"_s, qlonglong(2)},
                                                   {u"GD12_ID_MG94"_s, qlonglong(1)}}},
                                                 {u"GD12_PROMO"_s,
                                                  {{u"GD12_DITTA_CG18"_s, qlonglong(company)},
                                                   {u"GD12_ID"_s, qlonglong(9002)},
                                                   {u"GD12_ID_GD02"_s, qlonglong(3)},
                                                   {u"GD12_ID_MG94"_s, qlonglong(1)}}}})},
        {u"CMD_ANNULLA_Click: rows the operation inserted, removed"_s,
         executes,
         {},
         storicostatements::deleteRowsStatement(u"GD12_PROMO"_s, {9001, 9002})},
        {u"CMD_ANNULLA_Click: of the subjects brought back, those linked elsewhere"_s,
         someRows,
         {},
         storicostatements::linkedSubjectsQuery(company, customers, {1001, 1002, 99999})},
        {u"CMD_ANNULLA_Click: of the nodes removed, those a condition reaches"_s,
         anything,
         {},
         storicostatements::nodesWithConditionsQuery({1, 2, 3})},
        {u"CMD_ANNULLA_Click: the rows an operation recorded"_s,
         rows(5),
         {u"GD91_TABELLA"_s, u"GD91_AZIONE"_s},
         storicostatements::operationRowsQuery(1)},
        {u"CMD_ANNULLA_Click: the keys an operation recorded"_s, rows(5), {}, storicostatements::recordedKeysQuery(1)},
        {u"OperazioneStorico: the operation closed"_s, executes, {}, storicostatements::closeOperationStatement(1)},
        {u"OperazioneStorico: an operation that recorded something is kept"_s,
         executes,
         {},
         storicostatements::dropEmptyOperationStatement(1)},
        {u"CMD_ANNULLA_Click: the operation read"_s,
         rows(1),
         {u"GD90_OPERAZIONE"_s},
         storicostatements::operationQuery(1)},
        {u"CMD_ANNULLA_Click: the user's last operation that stands"_s,
         rows(1),
         {},
         storicostatements::lastUndoableQuery(u"o'neill"_s, company, 1)},
        {u"CMD_RIPETI_Click: the user's last action or undo"_s,
         rows(1),
         {},
         storicostatements::lastRedoCandidateQuery(u"o'neill"_s, company, 1)},
        {u"CMD_ANNULLA_Click: the operation marked as undone"_s,
         executes,
         {},
         storicostatements::markReversedStatement(1, 2)},
        {u"CaricaStorico: a node's history"_s,
         rows(3),
         {u"GD91_TABELLA"_s},
         storicostatements::nodeHistoryQuery(company, 2, u"nessun-guid"_s)},
        {u"CaricaStorico: a subject's history in every classification"_s,
         anything,
         {},
         storicostatements::subjectHistoryQuery(company, customers, 1001)},
        {u"CMD_STORICO_Click: a classification's history within two days, one user's, one operation's"_s,
         rows(5),
         {u"GD90_OPERAZIONE"_s},
         storicostatements::classificationHistoryQuery(
             {company, 1, QDate(2020, 1, 1), QDate(2099, 12, 31), u"o'neill"_s, u"Modifica"_s})},
        {u"CaricaStorico: a subject's name"_s,
         rows(1),
         {u"CG16_RAGSOANAG"_s},
         storicostatements::subjectNameQuery(company, customers, 1001)},
        {u"CaricaStorico: a node's subject"_s, rows(1), {}, storicostatements::nodeSubjectQuery(2)},
        {u"CaricaStorico: a priority's name"_s, anything, {}, storicostatements::priorityNameQuery(1)},
        {u"CaricaStorico: a campaign's name"_s, anything, {}, storicostatements::campaignNameQuery(1)},
        {u"CaricaStorico: a state's name"_s, rows(1), {u"WF01_DESCR"_s}, storicostatements::stateNameQuery(1)},
        {u"CMD_CONFRONTA_Click: the links valid on a day"_s,
         someRows,
         {u"GD02_CLIFOR_CG44"_s},
         storicostatements::linksValidOnQuery(company, 1, QDate(2025, 1, 1))},
        {u"CMD_CONFRONTA_Click: the links valid on one of two days"_s,
         someRows,
         {u"SoloPrimo"_s},
         storicostatements::linksValidOnOneDayQuery(company, 1, QDate(2024, 6, 1), QDate(2025, 6, 1))},
        {u"CMD_VERIFICA_Click: subjects in no classification of a division on a day"_s,
         anything,
         {u"CG44_CLIFOR"_s},
         verificastatements::missingSubjectsQuery(company, QDate(2025, 6, 1), {})},
        {u"CMD_VERIFICA_Click: subjects missing from one type's division"_s,
         anything,
         {u"CG44_TIPOCF"_s},
         verificastatements::missingSubjectsQuery(company, QDate(2025, 6, 1), 1)},
        {u"CMD_VERIFICA_Click: overlapping links of a subject in one division"_s,
         anything,
         {u"IdAltro"_s},
         verificastatements::overlappingLinksQuery(company, {})},
        {u"CMD_VERIFICA_Click: overlapping links with a node of one type"_s,
         anything,
         {u"FineAltro"_s},
         verificastatements::overlappingLinksQuery(company, 1)},
        {u"CMD_VERIFICA_Click: children outside their parent's period"_s,
         anything,
         {u"IdPadre"_s},
         verificastatements::childrenOutsideParentQuery(company, {})},
        {u"CMD_VERIFICA_Click: children of one type outside their parent's period"_s,
         anything,
         {u"FinePadre"_s},
         verificastatements::childrenOutsideParentQuery(company, 1)},
        {u"CMD_VERIFICA_Click: nodes whose subject, type or parent is gone"_s,
         noRows,
         {u"SenzaPadre"_s},
         verificastatements::orphanNodesQuery(company, {})},
        {u"CMD_VERIFICA_Click: nodes of one type whose subject, type or parent is gone"_s,
         noRows,
         {u"SenzaTipo"_s},
         verificastatements::orphanNodesQuery(company, 1)},
        {u"CMD_VERIFICA_Click: campaigns of nodes that are gone"_s,
         noRows,
         {u"MG94_CODCAMP"_s},
         verificastatements::orphanPromotionsQuery(company)},
        {u"CMD_VERIFICA_Click: contract conditions of nodes that are gone"_s,
         anything,
         {u"GD14_PROGRCOND_GD13"_s},
         verificastatements::orphanContractConditionsQuery(company)},
        {u"CMD_VERIFICA_Click: workflow states of nodes that are gone"_s,
         anything,
         {u"WF02_GUID"_s},
         verificastatements::orphanStatesQuery()},
        {u"CMD_IMPORTA_Click: the subjects of the kind, with their names"_s,
         someRows,
         {u"CG16_RAGSOANAG"_s},
         importazionestatements::subjectsQuery(company, customers)},
        {u"CMD_IMPORTA_Click: the price-list priorities"_s,
         someRows,
         {u"LP09_DESCR"_s},
         importazionestatements::prioritiesQuery()},
        {u"CMD_IMPORTA_Click: a subject's other links, with their nodes"_s,
         someRows,
         {u"IdNodo"_s},
         nodistatements::overlapQuery([] {
             nodistatements::Collegamento link = linkOf1198(std::nullopt, std::nullopt);
             link.withNodeId = true;
             return link;
         }())},
        {u"CMD_APPLICA_Click: a root of CLI-EXP with the file's values"_s,
         executes,
         {},
         nodistatements::insertStatement(importedNode(4, 0, 1298, QDate(2000, 1, 1)))},
        {u"mnuDoveUsato_Click: the links of a subject in every classification (one of the customers in two lists)"_s,
         rows(2),
         {u"GD01_CODICE"_s, u"GD01_DESCR"_s, u"ValidaOggi"_s},
         doveusatostatements::subjectLinksQuery(company, customers, 1015, today)},
    };
}

} // namespace corpus
