#include "platform/host/OwnerOnly.h"
#include "platform/host/System_windows.h"

#include <aclapi.h>
#include <sddl.h>

namespace host {

OwnerOnly::OwnerOnly() = default;
OwnerOnly::~OwnerOnly() = default;

bool MakePrivate(const QString& path)
{
    // Everything for the owner, the system and the administrators; nothing inherited; passed on to what is inside.
    constexpr const wchar_t* rights = L"D:P(A;OICI;FA;;;OW)(A;OICI;FA;;;SY)(A;OICI;FA;;;BA)";
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    PACL list = nullptr;
    BOOL isPresent = FALSE;
    BOOL isDefault = FALSE;
    if (::ConvertStringSecurityDescriptorToSecurityDescriptorW(rights, SDDL_REVISION_1, &descriptor, nullptr) == 0)
        return false;
    std::wstring name = WidePath(path);
    const bool isMade = ::GetSecurityDescriptorDacl(descriptor, &isPresent, &list, &isDefault) != 0 &&
                        ::SetNamedSecurityInfoW(name.data(), SE_FILE_OBJECT,
                                                DACL_SECURITY_INFORMATION | PROTECTED_DACL_SECURITY_INFORMATION,
                                                nullptr, nullptr, list, nullptr) == ERROR_SUCCESS;
    ::LocalFree(descriptor);
    return isMade;
}

} // namespace host
