#pragma once

#include <span>

namespace dbsetup::demonames {

// Italian regions as the demo's market zones (zone within area within macro area).
struct Region
{
    const char *code;      // zone code, MG09_ZONA
    const char *name;      // zone description
    const char *area;      // MG08_AREA
    const char *macroArea; // MG07_MACROAREA
};

struct City
{
    const char *name;
    const char *province; // two-letter province code
    const char *cap;
    const char *phonePrefix;
    const char *region; // Region::code
};

struct CodeText
{
    const char *code;
    const char *text;
};

struct Category
{
    const char *macroCategory; // MG10_MACROCAT
    const char *code;          // MG11_CATEG
    const char *text;
};

std::span<const Region> regions();
std::span<const CodeText> areas(); // MG08 areas; each region names its area and macro area
std::span<const CodeText> macroAreas();
std::span<const City> cities();
std::span<const char *const> surnames(); // a few carry an apostrophe (D'Angelo)
std::span<const char *const> firstNames();
std::span<const char *const> customerActivities();
std::span<const char *const> supplierActivities();
std::span<const char *const> streets();

// Market classifications by subject kind (0 customers, 1 suppliers).
std::span<const CodeText> macroCategories(int kind);
std::span<const Category> categories(int kind);
std::span<const CodeText> subCategories();      // the same bands under every category
std::span<const CodeText> groupings(int which); // free groupings 1, 2 and 3

const Region &regionOf(const City &city);

} // namespace dbsetup::demonames
