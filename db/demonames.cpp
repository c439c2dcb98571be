#include "demonames.h"

#include <cstring>

namespace dbsetup::demonames {

namespace {

const Region kRegions[] = {
    {"PIE", "Piemonte", "NO", "N"},
    {"VDA", "Valle d'Aosta", "NO", "N"},
    {"LOM", "Lombardia", "NO", "N"},
    {"LIG", "Liguria", "NO", "N"},
    {"TAA", "Trentino-Alto Adige", "NE", "N"},
    {"VEN", "Veneto", "NE", "N"},
    {"FVG", "Friuli-Venezia Giulia", "NE", "N"},
    {"EMR", "Emilia-Romagna", "NE", "N"},
    {"TOS", "Toscana", "CE", "C"},
    {"UMB", "Umbria", "CE", "C"},
    {"MAR", "Marche", "CE", "C"},
    {"LAZ", "Lazio", "CE", "C"},
    {"ABR", "Abruzzo", "SU", "S"},
    {"MOL", "Molise", "SU", "S"},
    {"CAM", "Campania", "SU", "S"},
    {"PUG", "Puglia", "SU", "S"},
    {"BAS", "Basilicata", "SU", "S"},
    {"CAL", "Calabria", "SU", "S"},
    {"SIC", "Sicilia", "IS", "S"},
    {"SAR", "Sardegna", "IS", "S"},
};

const CodeText kMacroAreas[] = {
    {"N", "Nord"},
    {"C", "Centro"},
    {"S", "Sud e Isole"},
};

const CodeText kAreas[] = {
    {"NO", "Nord-Ovest"}, {"NE", "Nord-Est"}, {"CE", "Centro"}, {"SU", "Sud"}, {"IS", "Isole"},
};

const City kCities[] = {
    {"Milano", "MI", "20121", "02", "LOM"},
    {"Torino", "TO", "10121", "011", "PIE"},
    {"Genova", "GE", "16121", "010", "LIG"},
    {"Bergamo", "BG", "24121", "035", "LOM"},
    {"Brescia", "BS", "25121", "030", "LOM"},
    {"Como", "CO", "22100", "031", "LOM"},
    {"Varese", "VA", "21100", "0332", "LOM"},
    {"Monza", "MB", "20900", "039", "LOM"},
    {"Sesto San Giovanni", "MI", "20099", "02", "LOM"},
    {"Busto Arsizio", "VA", "21052", "0331", "LOM"},
    {"Lodi", "LO", "26900", "0371", "LOM"},
    {"Cremona", "CR", "26100", "0372", "LOM"},
    {"Mantova", "MN", "46100", "0376", "LOM"},
    {"Pavia", "PV", "27100", "0382", "LOM"},
    {"Novara", "NO", "28100", "0321", "PIE"},
    {"Alessandria", "AL", "15121", "0131", "PIE"},
    {"Cuneo", "CN", "12100", "0171", "PIE"},
    {"Asti", "AT", "14100", "0141", "PIE"},
    {"Aosta", "AO", "11100", "0165", "VDA"},
    {"La Spezia", "SP", "19121", "0187", "LIG"},
    {"Savona", "SV", "17100", "019", "LIG"},
    {"Verona", "VR", "37121", "045", "VEN"},
    {"Padova", "PD", "35121", "049", "VEN"},
    {"Venezia", "VE", "30121", "041", "VEN"},
    {"Vicenza", "VI", "36100", "0444", "VEN"},
    {"Treviso", "TV", "31100", "0422", "VEN"},
    {"Rovigo", "RO", "45100", "0425", "VEN"},
    {"Belluno", "BL", "32100", "0437", "VEN"},
    {"Trento", "TN", "38122", "0461", "TAA"},
    {"Bolzano", "BZ", "39100", "0471", "TAA"},
    {"Udine", "UD", "33100", "0432", "FVG"},
    {"Trieste", "TS", "34121", "040", "FVG"},
    {"Pordenone", "PN", "33170", "0434", "FVG"},
    {"Bologna", "BO", "40121", "051", "EMR"},
    {"Modena", "MO", "41121", "059", "EMR"},
    {"Parma", "PR", "43121", "0521", "EMR"},
    {"Reggio Emilia", "RE", "42121", "0522", "EMR"},
    {"Piacenza", "PC", "29121", "0523", "EMR"},
    {"Ferrara", "FE", "44121", "0532", "EMR"},
    {"Rimini", "RN", "47921", "0541", "EMR"},
    {"Forlì", "FC", "47121", "0543", "EMR"},
    {"Ravenna", "RA", "48121", "0544", "EMR"},
    {"Imola", "BO", "40026", "0542", "EMR"},
    {"Carpi", "MO", "41012", "059", "EMR"},
    {"Firenze", "FI", "50123", "055", "TOS"},
    {"Prato", "PO", "59100", "0574", "TOS"},
    {"Pisa", "PI", "56121", "050", "TOS"},
    {"Livorno", "LI", "57121", "0586", "TOS"},
    {"Siena", "SI", "53100", "0577", "TOS"},
    {"Arezzo", "AR", "52100", "0575", "TOS"},
    {"Lucca", "LU", "55100", "0583", "TOS"},
    {"Grosseto", "GR", "58100", "0564", "TOS"},
    {"Empoli", "FI", "50053", "0571", "TOS"},
    {"Perugia", "PG", "06121", "075", "UMB"},
    {"Terni", "TR", "05100", "0744", "UMB"},
    {"Ancona", "AN", "60121", "071", "MAR"},
    {"Pesaro", "PU", "61121", "0721", "MAR"},
    {"Macerata", "MC", "62100", "0733", "MAR"},
    {"Roma", "RM", "00184", "06", "LAZ"},
    {"Latina", "LT", "04100", "0773", "LAZ"},
    {"Viterbo", "VT", "01100", "0761", "LAZ"},
    {"Frosinone", "FR", "03100", "0775", "LAZ"},
    {"Pescara", "PE", "65121", "085", "ABR"},
    {"L'Aquila", "AQ", "67100", "0862", "ABR"},
    {"Chieti", "CH", "66100", "0871", "ABR"},
    {"Campobasso", "CB", "86100", "0874", "MOL"},
    {"Napoli", "NA", "80133", "081", "CAM"},
    {"Salerno", "SA", "84121", "089", "CAM"},
    {"Caserta", "CE", "81100", "0823", "CAM"},
    {"Avellino", "AV", "83100", "0825", "CAM"},
    {"Benevento", "BN", "82100", "0824", "CAM"},
    {"Bari", "BA", "70121", "080", "PUG"},
    {"Lecce", "LE", "73100", "0832", "PUG"},
    {"Foggia", "FG", "71121", "0881", "PUG"},
    {"Taranto", "TA", "74121", "099", "PUG"},
    {"Brindisi", "BR", "72100", "0831", "PUG"},
    {"Potenza", "PZ", "85100", "0971", "BAS"},
    {"Matera", "MT", "75100", "0835", "BAS"},
    {"Cosenza", "CS", "87100", "0984", "CAL"},
    {"Reggio Calabria", "RC", "89127", "0965", "CAL"},
    {"Catanzaro", "CZ", "88100", "0961", "CAL"},
    {"Palermo", "PA", "90133", "091", "SIC"},
    {"Catania", "CT", "95121", "095", "SIC"},
    {"Messina", "ME", "98122", "090", "SIC"},
    {"Siracusa", "SR", "96100", "0931", "SIC"},
    {"Trapani", "TP", "91100", "0923", "SIC"},
    {"Ragusa", "RG", "97100", "0932", "SIC"},
    {"Cagliari", "CA", "09124", "070", "SAR"},
    {"Sassari", "SS", "07100", "079", "SAR"},
    {"Nuoro", "NU", "08100", "0784", "SAR"},
};

const char *const kSurnames[] = {
    "Rossi",      "Russo",     "Ferrari",   "Esposito",   "Bianchi",    "Romano",    "Colombo",    "Ricci",
    "Marino",     "Greco",     "Bruno",     "Gallo",      "Conti",      "De Luca",   "Mancini",    "Costa",
    "Giordano",   "Rizzo",     "Lombardi",  "Moretti",    "Barbieri",   "Fontana",   "Santoro",    "Mariani",
    "Rinaldi",    "Caruso",    "Ferrara",   "Galli",      "Martini",    "Leone",     "Longo",      "Gentile",
    "Martinelli", "Vitale",    "Lombardo",  "Serra",      "Coppola",    "De Santis", "D'Angelo",   "Marchetti",
    "Parisi",     "Villa",     "Conte",     "Ferraro",    "Ferri",      "Fabbri",    "Bianco",     "Marini",
    "Grasso",     "Valentini", "Messina",   "Sala",       "De Angelis", "Gatti",     "Pellegrini", "Palumbo",
    "Sanna",      "Farina",    "Rizzi",     "Monti",      "Cattaneo",   "Morelli",   "Amato",      "Silvestri",
    "Mazza",      "Testa",     "Grassi",    "Pellegrino", "Carbone",    "Giuliani",  "Benedetti",  "Barone",
    "Rossetti",   "Caputo",    "Montanari", "Guerra",     "Palmieri",   "Bernardi",  "Martino",    "Fiore",
    "De Rosa",    "Ferretti",  "Bellini",   "Basile",     "Riva",       "Donati",    "Piras",      "Vitali",
    "Battaglia",  "Sartori",   "Neri",      "Costantini", "Milani",     "Pagano",    "Ruggiero",   "Sorrentino",
    "D'Amico",    "Orlando",   "Negri",     "Mattei",     "Dell'Acqua",
};

const char *const kFirstNames[] = {
    "Marco",   "Giuseppe",  "Giovanni", "Antonio", "Luca",      "Francesco",  "Alessandro", "Andrea",
    "Stefano", "Paolo",     "Roberto",  "Mario",   "Matteo",    "Davide",     "Simone",     "Massimo",
    "Fabio",   "Maria",     "Anna",     "Giulia",  "Francesca", "Laura",      "Chiara",     "Sara",
    "Elena",   "Valentina", "Paola",    "Silvia",  "Federica",  "Alessandra", "Martina",    "Roberta",
    "Lucia",   "Cristina",  "Enrico",   "Lorenzo", "Riccardo",  "Claudio",    "Daniela",    "Monica",
};

const char *const kCustomerActivities[] = {
    "Alimentari",
    "Supermercati",
    "Distribuzione",
    "Market",
    "Drogheria",
    "Salumeria",
    "Panificio",
    "Caseificio",
    "Enoteca",
    "Bar",
    "Ristorante",
    "Trattoria",
    "Pasticceria",
    "Macelleria",
    "Ortofrutta",
    "Cash & Carry",
    "Minimarket",
    "Gastronomia",
    "Hotel",
    "Pizzeria",
    "Discount",
    "Ipermercato",
    "Forniture Alberghiere",
    "Caffetteria",
};

const char *const kSupplierActivities[] = {
    "Industria Alimentare",
    "Molino",
    "Oleificio",
    "Pastificio",
    "Conserve",
    "Imballaggi",
    "Trasporti",
    "Logistica",
    "Cantine",
    "Birrificio",
    "Acque Minerali",
    "Torrefazione",
    "Dolciaria",
    "Surgelati",
    "Carni",
    "Lattiero Casearia",
    "Agricola",
    "Cartotecnica",
    "Impianti Frigoriferi",
    "Servizi Informatici",
};

const char *const kStreets[] = {
    "Via Roma",
    "Via Garibaldi",
    "Corso Italia",
    "Via Mazzini",
    "Via Cavour",
    "Viale della Repubblica",
    "Via Dante Alighieri",
    "Piazza del Popolo",
    "Via Giuseppe Verdi",
    "Via Guglielmo Marconi",
    "Via XX Settembre",
    "Via Vittorio Emanuele II",
    "Via dell'Industria",
    "Via dell'Artigianato",
    "Via Nazionale",
    "Via San Francesco",
    "Via Giacomo Matteotti",
    "Via Antonio Gramsci",
    "Via IV Novembre",
    "Via Aldo Moro",
    "Viale Europa",
    "Via del Lavoro",
    "Via Leonardo da Vinci",
    "Corso Vittorio Emanuele",
    "Via Galileo Galilei",
    "Via della Stazione",
    "Via Alessandro Volta",
    "Via dei Mille",
    "Piazza Duomo",
    "Via Cesare Battisti",
};

const CodeText kCustomerMacroCategories[] = {
    {"GDO", "Grande distribuzione"},
    {"DET", "Dettaglio tradizionale"},
    {"HOR", "Ho.Re.Ca."},
    {"ING", "Ingrosso"},
};

const Category kCustomerCategories[] = {
    {"GDO", "IPER", "Ipermercati"},
    {"GDO", "SUPER", "Supermercati"},
    {"GDO", "DISC", "Discount"},
    {"DET", "ALIM", "Alimentari"},
    {"DET", "SPEC", "Negozi specializzati"},
    {"HOR", "BAR", "Bar e caffetterie"},
    {"HOR", "RIST", "Ristoranti e pizzerie"},
    {"HOR", "HOTEL", "Hotel"},
    {"ING", "CC", "Cash & Carry"},
    {"ING", "GROSS", "Grossisti"},
};

const CodeText kSupplierMacroCategories[] = {
    {"MP", "Materie prime"},
    {"IMB", "Imballaggi"},
    {"SRV", "Servizi"},
    {"PF", "Prodotti finiti"},
};

const Category kSupplierCategories[] = {
    {"MP", "FAR", "Farine e cereali"}, {"MP", "OLI", "Oli e grassi"}, {"MP", "LAT", "Latte e derivati"},
    {"IMB", "CART", "Cartone"},        {"IMB", "PLAS", "Plastica"},   {"SRV", "TRAS", "Trasporti"},
    {"SRV", "MANUT", "Manutenzioni"},  {"SRV", "IT", "Informatica"},  {"PF", "ALIM", "Alimentari"},
    {"PF", "BEV", "Bevande"},
};

const CodeText kSubCategories[] = {
    {"A", "Fascia A - strategico"},
    {"B", "Fascia B - standard"},
    {"C", "Fascia C - occasionale"},
};

const CodeText kGroupings1[] = {
    {"AGE", "Acquisito da agente"},
    {"FIERA", "Acquisito in fiera"},
    {"WEB", "Acquisito dal sito"},
    {"DIR", "Acquisito dalla direzione"},
};

const CodeText kGroupings2[] = {
    {"A", "Fatturato oltre 500.000 euro"},
    {"B", "Fatturato 100.000-500.000 euro"},
    {"C", "Fatturato fino a 100.000 euro"},
};

const CodeText kGroupings3[] = {
    {"GA1", "Gruppo d'acquisto Nord"},
    {"GA2", "Gruppo d'acquisto Centro-Sud"},
    {"IND", "Indipendente"},
};

template<typename T, std::size_t N>
std::span<const T> all(const T (&items)[N])
{
    return std::span<const T>(items, N);
}

} // namespace

std::span<const Region> regions()
{
    return all(kRegions);
}
std::span<const CodeText> areas()
{
    return all(kAreas);
}
std::span<const CodeText> macroAreas()
{
    return all(kMacroAreas);
}
std::span<const City> cities()
{
    return all(kCities);
}
std::span<const char *const> surnames()
{
    return all(kSurnames);
}
std::span<const char *const> firstNames()
{
    return all(kFirstNames);
}
std::span<const char *const> customerActivities()
{
    return all(kCustomerActivities);
}
std::span<const char *const> supplierActivities()
{
    return all(kSupplierActivities);
}
std::span<const char *const> streets()
{
    return all(kStreets);
}

std::span<const CodeText> macroCategories(int kind)
{
    return kind == 0 ? all(kCustomerMacroCategories) : all(kSupplierMacroCategories);
}

std::span<const Category> categories(int kind)
{
    return kind == 0 ? all(kCustomerCategories) : all(kSupplierCategories);
}

std::span<const CodeText> subCategories()
{
    return all(kSubCategories);
}

std::span<const CodeText> groupings(int which)
{
    switch (which) {
    case 1: return all(kGroupings1);
    case 2: return all(kGroupings2);
    default: return all(kGroupings3);
    }
}

const Region &regionOf(const City &city)
{
    for (const Region &region : kRegions) {
        if (std::strcmp(region.code, city.region) == 0)
            return region;
    }
    return kRegions[0];
}

} // namespace dbsetup::demonames
