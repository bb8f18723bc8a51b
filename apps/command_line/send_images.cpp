#include "command_line/send_images.hpp"

#include "command_line/error_text.hpp"
#include "command_line/harmless_text.hpp"
#include "quill1xml/error.hpp"
#include "quill1xml/store.hpp"
#include "quill1xml/text.hpp"

namespace quill1xml::cli {
namespace {

std::string imageCount(std::size_t count) { return std::to_string(count) + (count == 1 ? " image" : " images"); }

}  // namespace

int sendImages(Exchanges& exchanges, const ImageOptions& options, std::ostream& out, std::ostream& err) {
    const std::u16string folder = toUtf16(options.folder);
    const std::u16string spec = toUtf16(options.spec);
    Store store(exchanges.environment());
    try {
        const std::size_t found = exchanges.environment().files->list(folder + u"\\" + spec).size();
        if (found == 0) {
            err << "send-images: no file in " << excerpt(options.folder) << " matches " << excerpt(options.spec)
                << "; upper and lower case differ, and a pattern stands in quotes" << std::endl;
            return 1;
        }
        const std::string count = imageCount(found);
        // Shown before the sending, which may take long.
        out << count << (options.remove ? " to delete: " : " to send: ") << options.spec << std::endl;
        exchanges.during(store, "SendImage", [&] {
            store.SendImage({.lngStoreID = toUtf16(std::to_string(options.store)),
                             .strUserName = toUtf16(options.user),
                             .strPassword = toUtf16(options.password),
                             .strPath = folder,
                             .strFileSpec = spec,
                             .intblnCreateThumbNail = static_cast<Integer>(options.thumbnail),
                             .strDestinationURL = toUtf16(options.url),
                             .strUploadFolder = toUtf16(options.uploadFolder),
                             .blnDeleted = options.remove});
        });
        out << count << (options.remove ? " deleted from " : " sent to ") << options.uploadFolder << " of store "
            << options.store << std::endl;
        return 0;
    } catch (const Error& error) {
        err << "send-images: " << errorText(error, store.LastFailure()) << std::endl;
        return 1;
    }
}

}  // namespace quill1xml::cli
