#pragma once

#include <QObject>
#include <memory>
#include <optional>

class FormFrame;

namespace fw {
class Cinterface;
}

namespace distinta {

// What the editor asks of the module's entry class that opened it, to open the classification
// types as one more component of the host: a new instance of that class, told to open the type
// maintenance (on a type, when one is chosen) instead of the editor.
class ModuleEntry
{
public:
    virtual ~ModuleEntry() = default;

    // A new, empty instance of the entry class, as the host would create it.
    virtual std::unique_ptr<fw::Cinterface> createInstance() const = 0;
    // Makes ShowForm open the type maintenance, on idDistinta when given.
    virtual void setTypeMaintenance(std::optional<qint64> idDistinta) = 0;
    // The form opened by the last ShowForm; null before it or once it is gone.
    virtual FormFrame *shownForm() const = 0;
};

} // namespace distinta

#define ModuleEntry_iid "it.vrax.distinta.ModuleEntry/1.0"
Q_DECLARE_INTERFACE(distinta::ModuleEntry, ModuleEntry_iid)
