// The identities of the classes: what registration, the type library and compiled hosts know them by. All of them are
// promises: never change or reuse one.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace quill1xml::automation {

inline constexpr std::string_view libraryName = "Quill1XML";
inline constexpr std::string_view libraryId = "df527628-811a-41fc-9f45-8140dfe42689";
inline constexpr std::uint16_t libraryMajor = 1;
inline constexpr std::uint16_t libraryMinor = 0;

/// GUIDs in their text form, without braces.
struct Identity {
    std::string_view className;
    std::string_view coclass;
    std::string_view members;   ///< the default dispinterface
    std::string_view events{};  ///< the source dispinterface; empty for a class without events
};

inline constexpr Identity identities[] = {
    {"Store", "cb481e18-4aae-4cae-9998-0e1196fbd90f", "42cdfacd-4d49-4152-85df-1697331bfe0c",
     "8158e818-fd43-49d3-8d5c-213edf3629aa"},
    {"CString", "1ac9c079-cfa4-4d6b-94aa-0b3488961480", "84ad6547-7402-4f46-8548-f2d3bec8ff7a"},
};

/// The identity of a class; null when it was given none.
constexpr const Identity* findIdentity(std::string_view className) {
    for (const Identity& identity : identities) {
        if (identity.className == className) return &identity;
    }
    return nullptr;
}

}  // namespace quill1xml::automation
