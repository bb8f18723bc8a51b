// The folders of a job's packet files.
#pragma once

#include "automation/classes.hpp"
#include "quill1xml/ports.hpp"

#include <nlohmann/json.hpp>

#include <filesystem>
#include <map>
#include <ostream>
#include <set>
#include <string>

namespace quill1xml::cli {

/// Whether a Send with these arguments posts packet files, rather than a document of the host's own.
bool sendsPackets(const automation::Member& method, const nlohmann::json& values);

/// The folder that the arguments of a SetTempFilePath name, without a separator at its end.
std::u16string packetFolder(const nlohmann::json& values);

/// The one that a store uses where none is set.
inline constexpr Text usualPacketFolder = u"C:";

/// Holds the folders that a job uses, each from the first call that touches it, until it ends.
class PacketFolders {
public:
    /// Warnings go to the stream.
    PacketFolders(std::shared_ptr<ports::Files> files, std::ostream& err) : files_(std::move(files)), err_(err) {}

    /// Before a call. Throws as Files::hold does, before anything is touched; warns of a folder that cannot be held,
    /// and of packet files not among the sent ones that a Create will delete.
    void prepare(const automation::Member& method, const nlohmann::json& values, const std::set<std::u16string>& sent);

    /// From now on the store holds its folder itself, as it does with a journal.
    void leaveToStore();

    /// After a call that went well.
    void follow(const automation::Member& method, const nlohmann::json& values);

private:
    void hold();
    void warnOfLoss(const std::set<std::u16string>& sent) const;

    std::shared_ptr<ports::Files> files_;
    std::ostream& err_;
    std::u16string folder_{usualPacketFolder};
    bool taken_ = false;                                                         ///< the folder is held, or cannot be
    bool left_ = false;                                                          ///< to the store
    std::map<std::filesystem::path, std::unique_ptr<ports::FolderHold>> holds_;  ///< null where it cannot be held
};

}  // namespace quill1xml::cli
