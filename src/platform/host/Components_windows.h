#pragma once

#include "platform/host/System_windows.h"

#include <memory>
#include <objbase.h>

namespace host {

struct Release {
    void operator()(IUnknown* object) const { object->Release(); }
};
template <class Interface>
using Owned = std::unique_ptr<Interface, Release>;

/// The component library, for the lifetime of the object.
class Components {
public:
    Components() : isReady(SUCCEEDED(::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) {}
    ~Components()
    {
        if (isReady)
            ::CoUninitialize();
    }
    Q_DISABLE_COPY_MOVE(Components)

private:
    bool isReady;
};

/// None where Windows lacks the class.
template <class Interface>
Owned<Interface> NewComponent(const CLSID& type, const IID& id)
{
    void* made = nullptr;
    ::CoCreateInstance(type, nullptr, CLSCTX_INPROC_SERVER, id, &made);
    return Owned<Interface>(static_cast<Interface*>(made));
}

} // namespace host
