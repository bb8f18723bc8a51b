// What became of the packets of a job, kept in a file so that another process can go on with it.
//
// The journal is UTF-16 text like packet files. A line is a word and its values, separated by tabs, with a digest of
// them as its end; every line is on the disk before what follows it happens:
//
//     journal 1   folder of the packets, number of the store, schema source   a job's sending has begun
//     waiting     packet file                                                 it is to be sent
//     posting     packet file, digest                                         it is about to be posted
//     accepted    packet file, digest, import number                          its receipt came
//     returned    packet file                                                 the store surely has not taken it
//     deleting                                                                all were sent; their files go
//     torn                                                                    the line before it broke off
#pragma once

#include "quill1xml/ports.hpp"

#include <cstdint>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace quill1xml::store {

/// Tells a packet from what it becomes when it is edited.
std::uint64_t digestOf(Text content);

class Journal {
public:
    /// Reads the journal in a file; without the file it is a new one. Nothing is written. Throws an Error when the file
    /// cannot be read, is no journal or is damaged before its end.
    Journal(std::shared_ptr<ports::Files> files, std::u16string fileName);

    const std::u16string& fileName() const noexcept { return fileName_; }

    /// Whether the sending of a job has begun and its packet files are not all sent and deleted.
    bool begun() const noexcept { return begun_; }
    bool deletes() const noexcept { return deletes_; }

    // Of the job that was begun.
    const std::u16string& folder() const noexcept { return folder_; }
    Long storeId() const noexcept { return storeId_; }
    const std::u16string& schemaSource() const noexcept { return schemaSource_; }

    struct Packet {
        enum class State : std::uint8_t { waiting, posting, accepted };

        State state = State::waiting;
        std::uint64_t digest = 0;  ///< of what was posted last
        Long importNumber = 0;     ///< once accepted
        bool doubtful = false;     ///< posted again while nobody knew whether it had arrived
    };

    /// By file name without folder.
    const std::map<std::u16string, Packet, std::less<>>& packets() const noexcept { return packets_; }

    // Each returns once its line is on the disk, and throws the Error of the file where it cannot get there.
    void begin(Text folder, Long storeId, Text schemaSource);
    void expect(std::span<const std::u16string> packetFiles);  ///< notes those that it does not know yet
    void posting(Text packetFile, std::uint64_t digest);
    void accepted(Text packetFile, std::uint64_t digest, Long importNumber);
    void returned(Text packetFile);
    void deleting();

    /// The job is over: removes the file.
    void finish();

private:
    void read(const Bytes& bytes);
    void take(const std::vector<Text>& line);
    void note(const std::vector<Text>& values);
    void write(std::u16string lines);

    std::shared_ptr<ports::Files> files_;
    std::u16string fileName_;
    bool torn_ = false;  ///< the last line in the file
    bool begun_ = false;
    bool deletes_ = false;
    std::u16string folder_;
    Long storeId_ = 0;
    std::u16string schemaSource_;
    std::map<std::u16string, Packet, std::less<>> packets_;
};

}  // namespace quill1xml::store
