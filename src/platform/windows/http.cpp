#include "platform/windows/create_object.hpp"
#include "platform/windows/dom.hpp"
#include "platform/windows/parts.hpp"
#include "platform/windows/url.hpp"
#include "quill1xml/text.hpp"

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
        com::Bstr contentType;
        // A reply without that header is no failure, and what is told about it must not explain a later one.
        if (FAILED(object_->getResponseHeader(com::Bstr(u"Content-Type").get(), contentType.put()))) {
            SetErrorInfo(0, nullptr);
        }
        reply.contentType = toUtf8(contentType.text());
        com::Variant bytes;
        check(object_->get_responseBody(bytes.put()));
        reply.body = bytes.bytes();
        return reply;
    }

private:
    void check(HRESULT result) const { platform::check(result, object_, target_.host); }

    HttpTarget target_;
    com::ComPtr<IXMLHTTPRequest> object_ = createObject<IXMLHTTPRequest>(u"MSXML2.XMLHTTP", iidXmlHttpRequest);
};

class WindowsHttp final : public Http {
public:
    HttpReply post(Text url, std::string_view contentType, std::string_view body) override {
        Request request(u"POST", url);
        request.setHeader(u"Content-Type", toUtf16(contentType));
        // The object would convert text to UTF-8; bytes go as they are.
        return request.send(com::Variant::ofBytes(std::as_bytes(std::span(body))));
    }

    HttpReply get(Text url) override {
        Request request(u"GET", url);
        // The object would answer from the cache that the user's browser shares.
        request.setHeader(u"If-Modified-Since", u"Sat, 01 Jan 2000 00:00:00 GMT");
        return request.send(com::Variant());
    }
};

}  // namespace

std::shared_ptr<Http> makeHttp() { return std::make_shared<WindowsHttp>(); }

}  // namespace quill1xml::platform
