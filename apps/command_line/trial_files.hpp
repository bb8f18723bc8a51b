// The files of a job that is only tried out.
#pragma once

#include "quill1xml/ports.hpp"

#include <cstddef>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace quill1xml::cli {

/// Packet files as a job would find and leave them, but written below a folder of ours; everything else may only be
/// read. Those of the first packet folder stand in ours itself; when the job goes on in another packet folder, or anew
/// in one whose packet files are gone, the next ones stand in its subfolder "2", and so on.
///
/// What was written to a packet file is held back until it is written out, so that it can be looked at.
class TrialFiles final : public ports::Files {
public:
    /// Watches the packet files that a job writes.
    class Watcher {
    public:
        virtual ~Watcher() = default;

        /// Before each text, which will begin at a place of what is held back; before the first one, of what an
        /// earlier job left in the file, which is not ours.
        virtual void writing(const std::u16string& packet, std::size_t start, Text text, bool ours) = 0;

        virtual void removing(const std::u16string& packet) = 0;
    };

    TrialFiles(std::shared_ptr<ports::Files> real, std::filesystem::path folder)
        : real_(std::move(real)), folder_(std::move(folder)) {}

    /// Sets who watches; null for nobody.
    void watchedBy(Watcher* watcher) { watcher_ = watcher; }

    /// What is held back of a packet file.
    Text unwritten(const std::u16string& packet) const;

    /// Of all packet files, in characters.
    std::size_t unwritten() const { return unwritten_; }

    void writeOut(const std::u16string& packet);
    void writeOut();

    /// While something is done, a packet file is read as if it held nothing but what is held back of it. The first
    /// packet file seems to hold some root then, where there is none.
    template <class Work>
    auto withUnwritten(const std::u16string& packet, Work work) {
        const Only only(only_, &packet);
        return work();
    }

    /// Whether the job wrote a packet file.
    bool isOurs(const std::u16string& packet) const { return packets_.contains(packet); }

    void appendText(Text fileName, Text text) override;
    void writeText(Text fileName, Text text) override;
    void flush(Text) override {}
    std::u16string readText(Text fileName) override;
    Bytes readBytes(Text fileName) override;
    std::vector<std::u16string> list(Text pattern) override;
    void remove(Text fileName) override;
    /// Nothing is touched in the job's folders, and ours are nobody else's.
    std::unique_ptr<ports::FolderHold> hold(Text folder) override { return std::make_unique<ports::OwnFolder>(folder); }
    std::u16string fileOfUrl(Text url) const override { return real_->fileOfUrl(url); }

private:
    struct Packet {
        std::u16string place;  ///< its file below our folder
        std::u16string unwritten;
    };

    class Only {
    public:
        Only(const std::u16string*& place, const std::u16string* packet) : place_(place) { place_ = packet; }
        ~Only() { place_ = nullptr; }
        Only(const Only&) = delete;
        Only& operator=(const Only&) = delete;

    private:
        const std::u16string*& place_;
    };

    struct Hash : std::hash<Text> {
        using is_transparent = void;
    };
    using Packets = std::unordered_map<std::u16string, Packet, Hash, std::equal_to<>>;

    Packets::iterator packetFor(Text fileName);
    std::u16string placeFor(Text fileName);
    void hold(Packets::iterator packet, Text text, bool ours);
    void writeOut(Packet& packet);
    bool isLeft(Text fileName);

    std::shared_ptr<ports::Files> real_;
    std::filesystem::path folder_;
    Watcher* watcher_ = nullptr;
    Packets packets_;                                         ///< by the names that the job gives them
    std::set<std::u16string, std::less<>> removed_;           ///< of those that others left
    std::map<std::u16string, std::filesystem::path> places_;  ///< our folders by those of the job
    std::size_t placeCount_ = 0;
    std::size_t unwritten_ = 0;
    const std::u16string* only_ = nullptr;
};

}  // namespace quill1xml::cli
