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

/// The dispinterface of the collections, which no host can create.
inline constexpr std::string_view collectionId = "b2f33678-f293-4088-9ff3-cabf3a23648a";

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
    {"Customer", "fef82541-3b4b-448b-87bd-856a3ee6946d", "f062f761-0066-497a-a9be-f5417709bb2c"},
    {"Order", "552c930b-2119-438a-b659-f455d11b5a33", "e32fcba2-1acb-447b-8ea7-677b37421947"},
    {"OrderLineItem", "6b0fa427-cc6a-4d1f-89f9-f98a478f9bf6", "a0be50c4-3176-46ee-8c4d-e436e12439b7"},
    {"Quotation", "ac097c92-6a93-4091-a3ad-3ff56dc5f307", "345f3fcd-5a8c-495e-8d5e-18f74b2021e7"},
    {"QuotationLineItem", "be5da1a1-0708-4e59-a8ac-14b2e00919bc", "92bd3020-31f8-46d0-a2f5-e1897d18e607"},
    {"UserDefinedField", "87ae8922-65fd-4fb2-8b42-e1081e030e8f", "547b1f72-242e-4506-9685-598ee64319de"},
};

/// The identity of a class; null when it was given none.
constexpr const Identity* findIdentity(std::string_view className) {
    for (const Identity& identity : identities) {
        if (identity.className == className) return &identity;
    }
    return nullptr;
}

}  // namespace quill1xml::automation
