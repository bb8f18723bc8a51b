// A store that plays the examples: its files are in memory, its clock stands still, and its server accepts everything.
#pragma once

#include "automation/classes.hpp"
#include "quill1xml/store.hpp"

#include <memory>
#include <string>

namespace quill1xml::automation {

class Playground {
public:
    Playground();
    ~Playground();

    Value call(const Member& method, const void* arguments);

    /// What the packet files hold, one after the other, in UTF-8.
    std::string written() const;

private:
    class Files;
    std::shared_ptr<Files> files_;
    std::unique_ptr<Store> store_;
};

}  // namespace quill1xml::automation
