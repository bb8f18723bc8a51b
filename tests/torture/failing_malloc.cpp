// To be preloaded: fails the allocation of a process that QUILL1XML_FAIL counts, from 1. QUILL1XML_COUNT names a file
// that gets the count at the end.
#include <atomic>
#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <cstdlib>

extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* memory, std::size_t size);
}

namespace {

std::atomic<long> allocations{0};

bool fails() {
    static const char* const wanted = std::getenv("QUILL1XML_FAIL");
    if (++allocations != (wanted == nullptr ? 0 : std::atol(wanted))) return false;
    errno = ENOMEM;
    return true;
}

struct Report {
    ~Report() {
        const long counted = allocations;
        const char* const name = std::getenv("QUILL1XML_COUNT");
        std::FILE* const file = name == nullptr ? nullptr : std::fopen(name, "w");
        if (file == nullptr) return;
        std::fprintf(file, "%ld\n", counted);
        std::fclose(file);
    }
} report;

}  // namespace

extern "C" {
void* malloc(std::size_t size) noexcept { return fails() ? nullptr : __libc_malloc(size); }
void* calloc(std::size_t count, std::size_t size) noexcept { return fails() ? nullptr : __libc_calloc(count, size); }
void* realloc(void* memory, std::size_t size) noexcept { return fails() ? nullptr : __libc_realloc(memory, size); }
}
