#include "quill1xml/http.hpp"
#include "platform/windows/create_object.hpp"
#include "platform/windows/dom.hpp"
#include "platform/windows/parts.hpp"
#include "platform/windows/url.hpp"
#include "quill1xml/text.hpp"

#include <urlmon.h>
#include <wininet.h>

namespace quill1xml::platform {
namespace {

/// One exchange with a server.
class Request {
public:
    Request(Text method, Text url) : target_(url) {
        // Without them the object would ask the user for the password that a server asks for.
        const bool known = !target_.authorization.empty();
        check(object_->open(com::Bstr(method).get(), com::Bstr(target_.url).get(), com::Variant(false).get(),
                            (known ? com::Variant(Text(target_.user)) : com::Variant()).get(),
                            (known ? com::Variant(Text(target_.password)) : com::Variant()).get()));
        if (known) setHeader(u"Authorization", target_.authorization);
    }

    void setHeader(Text name, Text value) {
        check(object_->setRequestHeader(com::Bstr(name).get(), com::Bstr(value).get()));
    }

    HttpReply send(const com::Variant& body) {
        check(object_->send(body.get()));
        HttpReply reply;
        long status = 0;
        check(object_->get_status(&status));
        reply.status = static_cast<int>(status);
        reply.contentType = header(u"Content-Type");
        reply.validators = {.entityTag = header(u"ETag"), .lastModified = header(u"Last-Modified")};
        com::Variant bytes;
        check(object_->get_responseBody(bytes.put()));
        reply.body = bytes.bytes();
        return reply;
    }

private:
    /// A header of the reply, empty when there is none; what is told about that must not explain a later failure.
    std::string header(Text name) {
        com::Bstr value;
        if (FAILED(object_->getResponseHeader(com::Bstr(name).get(), value.put()))) SetErrorInfo(0, nullptr);
        return toUtf8(value.text());
    }

    void check(HRESULT result) const { platform::check(result, object_, target_.host); }

    HttpTarget target_;
    com::ComPtr<IXMLHTTPRequest> object_ = createObject<IXMLHTTPRequest>(u"MSXML2.XMLHTTP", iidXmlHttpRequest);
};

/// Whether an exchange failed before its server was spoken to: the name is not known, or nobody takes the connection.
bool isBeforeSending(std::int32_t code) {
    return code == INET_E_RESOURCE_NOT_FOUND || code == INET_E_CANNOT_CONNECT ||
           code == HRESULT_FROM_WIN32(ERROR_INTERNET_NAME_NOT_RESOLVED) ||
           code == HRESULT_FROM_WIN32(ERROR_INTERNET_CANNOT_CONNECT);
}

class WindowsHttp final : public Http {
public:
    HttpReply post(Text url, std::string_view contentType, std::string_view body) override {
        Request request(u"POST", url);
        request.setHeader(u"Content-Type", toUtf16(contentType));
        try {
            // The object would convert text to UTF-8; bytes go as they are.
            return request.send(com::Variant::ofBytes(std::as_bytes(std::span(body))));
        } catch (const Error& error) {
            if (isBeforeSending(error.number())) throw NotReached(error);
            throw;
        }
    }

    HttpReply get(Text url, const Validators& known) override {
        Request request(u"GET", url);
        if (!known.entityTag.empty()) request.setHeader(u"If-None-Match", toUtf16(known.entityTag));
        // Without a date the object would answer from the cache that the user's browser shares.
        const std::string_view date = known.lastModified.empty() ? longAgo : std::string_view(known.lastModified);
        request.setHeader(u"If-Modified-Since", toUtf16(date));
        return request.send(com::Variant());
    }

private:
    static constexpr std::string_view longAgo = "Sat, 01 Jan 2000 00:00:00 GMT";
};

}  // namespace

}  // namespace quill1xml::platform

namespace quill1xml {

// The object has limits and certificates of its own.
std::shared_ptr<ports::Http> ports::systemHttp(const HttpOptions&) { return std::make_shared<platform::WindowsHttp>(); }

}  // namespace quill1xml
