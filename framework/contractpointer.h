#pragma once

#include <QObject>
#include <QPointer>

namespace fw {

// A reference to an object seen through one of its contracts. When the object is a QObject the
// reference empties itself on the object's destruction, as a counted reference never dangles.
template<typename Contract>
class ContractPointer
{
public:
    ContractPointer() = default;
    ContractPointer(Contract *object) { *this = object; }

    ContractPointer &operator=(Contract *object)
    {
        m_object = object;
        m_guard = dynamic_cast<QObject *>(object);
        m_tracked = !m_guard.isNull();
        return *this;
    }

    Contract *get() const { return (m_tracked && m_guard.isNull()) ? nullptr : m_object; }
    Contract *operator->() const { return get(); }
    explicit operator bool() const { return get() != nullptr; }
    void reset() { *this = nullptr; }

private:
    Contract *m_object = nullptr;
    QPointer<QObject> m_guard;
    bool m_tracked = false;
};

} // namespace fw
