#include "command_line/password.hpp"

#include "command_line/paths.hpp"
#include "command_line/process.hpp"
#include "command_line/terminal.hpp"

#include <fstream>
#include <stdexcept>

namespace quill1xml::cli {
namespace {

std::string firstLineOf(const std::string& file) {
    std::ifstream in(pathOf(file), std::ios::binary);
    std::string line;
    if (!std::getline(in, line)) throw std::runtime_error("no password can be read from the file " + file);
    if (line.ends_with('\r')) line.pop_back();
    return line;
}

}  // namespace

std::string readPassword(const std::string& file, const std::string& user) {
    if (!file.empty()) return firstLineOf(file);
    if (const auto password = environmentVariable("QUILL1XML_PASSWORD")) return *password;
    try {
        return askUnseen("Password of " + user + ": ");
    } catch (const std::runtime_error& error) {
        throw std::runtime_error(std::string("no password: ") + error.what() +
                                 "; name a file with --password-file or set QUILL1XML_PASSWORD");
    }
}

}  // namespace quill1xml::cli
