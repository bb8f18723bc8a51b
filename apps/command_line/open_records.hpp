// Records that a job has begun and not locked yet.
#pragma once

#include "automation/classes.hpp"
#include "quill1xml/store.hpp"

#include <cstddef>
#include <map>
#include <string>
#include <vector>

namespace quill1xml::cli {

class OpenRecords {
public:
    /// An element that was begun and never locked, and so is not published.
    struct Lost {
        std::u16string element;
        std::size_t line;  ///< that began it

        /// "this Product is never locked, ...".
        std::string text() const;
    };

    explicit OpenRecords(const Store& store) : store_(store) {}

    bool isOpen(const std::u16string& element) const { return open_.contains(element); }

    /// After a call that went well, which stands on a line of the job.
    void after(std::size_t line);

    /// What would be lost if everything was sent now; each is told once.
    std::vector<Lost> lost();

    /// The method that locks an element.
    static std::string lockOf(Text element);

private:
    struct Begun {
        std::size_t line = 0;
        bool told = false;
    };

    const Store& store_;
    std::map<std::u16string, Begun> open_;
};

}  // namespace quill1xml::cli
