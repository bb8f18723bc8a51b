// The server's answer to an image and to a document: a content type in the first line, then the body.
#include "fuzz.hpp"
#include "quill1xml/store.hpp"

using namespace quill1xml;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto [type, body] = fuzz::firstLine(fuzz::textOf(data, size));
    const ports::HttpReply reply{200, std::string(type), std::string(body)};
    fuzz::World world;
    world.xml->archive = u"A";
    world.files->bytes[u"D\\a.gif"] = {'A'};
    world.xml->files[u"d"] = u"<Store StoreID='1'><Envelope/></Store>";
    world.files->bytes[u"s"] = {'<', 's', '/', '>'};
    world.http->replies = {reply, reply};
    Store store(world.environment());
    fuzz::attempt([&] { store.SendImage({u"1", u"u", u"p", u"D", u"*", 0, u"http://shop"}); });
    fuzz::attempt([&] { store.Send({u"http://shop", u"File", u"d", u"s", u"A"}); });
    if (!world.http->replies.empty()) fuzz::find("not sent");
    world.inspect();
    return 0;
}
