#include "options.hpp"
#include "quill1xml/schema.hpp"
#include "quill1xml/version.hpp"

#include <csignal>
#include <cstdio>
#include <exception>
#include <fstream>
#include <iostream>
#include <stdexcept>

namespace {

using namespace quill1xml;

/// Whoever waits for the file never sees it half written.
void writePort(const std::string& file, int port) {
    const std::string draft = file + ".new";
    std::ofstream out(draft);
    out << port << '\n';
    out.close();
    if (!out || std::rename(draft.c_str(), file.c_str()) != 0) throw std::runtime_error("Cannot write " + file);
}

}  // namespace

int main(int argc, char** argv) {
    int exitStatus = 0;
    const auto options = sandbox::readOptions(argc, argv, version(), exitStatus);
    if (!options) return exitStatus;

    // The server's threads inherit the mask, so that the signals wait for us below.
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGINT);
    sigaddset(&signals, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    try {
        const sandbox::Server server({storeSchema(SchemaDialect::xsd), storeSchema(SchemaDialect::xdr), keyAttributes},
                                     options->settings);
        if (!options->portFile.empty()) writePort(options->portFile, server.port());
        std::cout << "webstore-sandbox listening on " << server.url() << std::endl;
        int signal = 0;
        sigwait(&signals, &signal);
    } catch (const std::exception& error) {
        std::cerr << "webstore-sandbox: " << error.what() << '\n';
        return 1;
    }
    return 0;
}
