// Makes exceptions work beside a foreign run-time library of the same compiler.
//
// When that library is already in the process, the compiler's startup code registers our unwind tables there. Our own
// unwinder is linked statically and never looks there: the first exception would end the host.

#include <windows.h>

#include <array>
#include <cstddef>
#include <cstring>
#include <string_view>

// Of the compiler's run-time library, which has no header for it.
extern "C" void __register_frame_info(const void* tables, void* record);

namespace {

/// The sections of a loaded module.
class Sections {
public:
    explicit Sections(HINSTANCE module)
        : base_(reinterpret_cast<const std::byte*>(module)),
          headers_(at<IMAGE_NT_HEADERS>(at<IMAGE_DOS_HEADER>(0)->e_lfanew)),
          next_(IMAGE_FIRST_SECTION(headers_)) {}

    const IMAGE_SECTION_HEADER* begin() const { return next_; }
    const IMAGE_SECTION_HEADER* end() const { return next_ + headers_->FileHeader.NumberOfSections; }

    template <class Content>
    const Content* at(LONG offset) const {
        return reinterpret_cast<const Content*>(base_ + offset);
    }

private:
    const std::byte* base_;
    const IMAGE_NT_HEADERS* headers_;
    const IMAGE_SECTION_HEADER* next_;
};

/// Whether a section holds unwind tables. Its name is cut to eight characters, or, in files that keep their symbols,
/// stands elsewhere; then the first record tells: it has a length, and no parent.
bool holdsUnwindTables(const IMAGE_SECTION_HEADER& section, const DWORD* content) {
    const std::string_view name(reinterpret_cast<const char*>(section.Name), sizeof section.Name);
    if (name == ".eh_fram") return true;
    constexpr DWORD read = IMAGE_SCN_CNT_INITIALIZED_DATA | IMAGE_SCN_MEM_READ;
    constexpr DWORD other = IMAGE_SCN_MEM_DISCARDABLE | IMAGE_SCN_MEM_EXECUTE;
    return name.front() == '/' && (section.Characteristics & (read | other)) == read && content[0] != 0 &&
           content[1] == 0;
}

}  // namespace

extern "C" BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, void*) {
    if (reason != DLL_PROCESS_ATTACH || GetModuleHandleW(L"libgcc_s_dw2-1.dll") == nullptr) return TRUE;
    // The unwinder's own notes, which it asks its caller to keep; it needs seven places.
    static std::array<void*, 16> record;
    const Sections sections(module);
    for (const IMAGE_SECTION_HEADER& section : sections) {
        const auto* const content = sections.at<DWORD>(static_cast<LONG>(section.VirtualAddress));
        if (!holdsUnwindTables(section, content)) continue;
        __register_frame_info(content, record.data());
        break;
    }
    return TRUE;
}
