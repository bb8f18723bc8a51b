#include "platform/windows/create_object.hpp"
#include "platform/windows/dom.hpp"
#include "platform/windows/parts.hpp"
#include "platform/windows/url.hpp"
#include "quill1xml/text.hpp"

namespace quill1xml::platform {
namespace {

void setHeader(IXMLHTTPRequest* request, Text name, Text value) {
    check(request->setRequestHeader(com::Bstr(name).get(), com::Bstr(value).get()));
}

HttpReply replyOf(IXMLHTTPRequest* request) {
    HttpReply reply;
    long status = 0;
    check(request->get_status(&status));
    reply.status = static_cast<int>(status);
    com::Bstr contentType;
    // A reply without that header is no failure.
    if (SUCCEEDED(request->getResponseHeader(com::Bstr(u"Content-Type").get(), contentType.put()))) {
        reply.contentType = toUtf8(contentType.text());
    }
    com::Variant bytes;
    check(request->get_responseBody(bytes.put()));
    reply.body = bytes.bytes();
    return reply;
}

HttpReply exchange(Text method, Text url, Text contentType, const com::Variant& body) {
    const HttpTarget target(url);
    const auto request = createObject<IXMLHTTPRequest>(u"MSXML2.XMLHTTP", iidXmlHttpRequest);
    try {
        check(request->open(com::Bstr(method).get(), com::Bstr(target.url).get(), com::Variant(false).get(),
                            com::Variant().get(), com::Variant().get()));
        if (!contentType.empty()) setHeader(request.get(), u"Content-Type", contentType);
        if (!target.authorization.empty()) setHeader(request.get(), u"Authorization", target.authorization);
        check(request->send(body.get()));
        return replyOf(request.get());
    } catch (const Error& error) {
        throw runtimeError(RuntimeError::automationError, target.host + u": " + error.description());
    }
}

class WindowsHttp final : public Http {
public:
    HttpReply post(Text url, std::string_view contentType, std::string_view body) override {
        // The object would convert text to UTF-8; bytes go as they are.
        return exchange(u"POST", url, toUtf16(contentType), com::Variant::ofBytes(std::as_bytes(std::span(body))));
    }

    HttpReply get(Text url, const Validators&) override { return exchange(u"GET", url, {}, com::Variant()); }
};

}  // namespace

std::shared_ptr<Http> makeHttp() { return std::make_shared<WindowsHttp>(); }

}  // namespace quill1xml::platform
