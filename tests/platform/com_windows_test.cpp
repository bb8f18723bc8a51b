#include "platform/ports.hpp"
#include "platform/windows/com_support.hpp"
#include "platform/windows/create_object.hpp"
#include "platform/windows/dom.hpp"
#include "platform/windows/errors.hpp"
#include "platform/windows/name_pattern.hpp"
#include "platform/windows/xml_parsing.hpp"
#include "quill1xml/text.hpp"
#include "support/expect_error.hpp"
#include "support/temp_folder.hpp"

#include <urlmon.h>

#include <gtest/gtest.h>

#include <thread>

namespace quill1xml {
namespace {

using com::Bstr;
using com::ComPtr;
using com::Variant;

/// The suite runs in one apartment, as a host would.
class Apartment : public ::testing::Environment {
public:
    void SetUp() override { ASSERT_EQ(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), S_OK); }
    void TearDown() override { CoUninitialize(); }
};

[[maybe_unused]] const auto* const apartment = ::testing::AddGlobalTestEnvironment(new Apartment);

ULONG countOf(IUnknown* object) {
    object->AddRef();
    return object->Release();
}

TEST(ComPtr, OtherInterfacesAndVariantsTakeCountsOfTheirOwn) {
    ComPtr<ICreateErrorInfo> object;
    ASSERT_EQ(CreateErrorInfo(object.put()), S_OK);
    {
        const auto info = com::query<IErrorInfo>(object.get(), IID_IErrorInfo);
        EXPECT_EQ(countOf(object.get()), 2u);
        Variant variant(static_cast<IUnknown*>(object.get()));
        EXPECT_EQ(countOf(object.get()), 3u);
        variant.put();
        EXPECT_EQ(countOf(object.get()), 2u);
    }
    EXPECT_EQ(countOf(object.get()), 1u);
    EXPECT_FALSE(com::query<IDispatch>(object.get(), IID_IDispatch));
    EXPECT_FALSE(com::query<IDispatch>(nullptr, IID_IDispatch));
}

TEST(ComText, NullCharactersAndNothingAreKept) {
    const Text text(u"a\0b", 3);
    EXPECT_EQ(Bstr(text).text(), text);
    EXPECT_EQ(Bstr().text(), u"");
    EXPECT_EQ(Variant(text).bytes(), "");
}

TEST(SystemErrors, BecomeTheNumbersThatHostsKnow) {
    const struct {
        HRESULT result;
        std::int32_t number;
    } cases[] = {
        {HRESULT_FROM_WIN32(ERROR_SHARING_VIOLATION), 70},
        {HRESULT_FROM_WIN32(ERROR_DISK_FULL), 61},
        {HRESULT_FROM_WIN32(ERROR_INVALID_NAME), 75},
        {static_cast<HRESULT>(0x800A000D), 13},
        {E_FAIL, E_FAIL},
    };
    for (const auto& c : cases) {
        testing::expectError([&] { platform::check(c.result, u"the subject"); }, c.number, u"the subject");
    }
    EXPECT_EQ(platform::errorOf(E_OUTOFMEMORY).number(), 7);
    EXPECT_NO_THROW(platform::check(S_FALSE));
}

void tellThread(Text description) {
    ComPtr<ICreateErrorInfo> creator;
    ASSERT_EQ(CreateErrorInfo(creator.put()), S_OK);
    creator->SetSource(Bstr(u"parser").get());
    creator->SetDescription(Bstr(description).get());
    SetErrorInfo(0, com::query<IErrorInfo>(creator.get(), IID_IErrorInfo).get());
}

TEST(SystemErrors, AnObjectExplainsItsOwnFailureOnce) {
    const auto object =
        platform::createObject<IXMLDOMDocument2>(platform::documentClass3, platform::iidXmlDomDocument2);
    const auto ofObject = [&](REFIID id) {
        const Error error = platform::errorOf(E_FAIL, object.get(), id);
        return error.source() + u"|" + error.description();
    };
    tellThread(u"Too many angles.\r\n");
    EXPECT_EQ(ofObject(platform::iidXmlDomDocument2), u"parser|Too many angles");
    // Of another interface, or of a call of the system: neither believed nor left for later.
    tellThread(u"Old");
    EXPECT_NE(ofObject(IID_IPersistStream), u"parser|Old");
    EXPECT_NE(ofObject(platform::iidXmlDomDocument2), u"parser|Old");
    tellThread(u"Old");
    EXPECT_NE(platform::errorOf(E_FAIL).description(), u"Old");
    EXPECT_NE(ofObject(platform::iidXmlDomDocument2), u"parser|Old");
}

TEST(SystemErrors, WordsStandInASentenceWithTheirCode) {
    EXPECT_TRUE(platform::systemText(INET_E_INVALID_CERTIFICATE).starts_with(u"The certificate"));
    EXPECT_EQ(platform::systemText(static_cast<HRESULT>(0x8ABC1234)), u"Automation error (0x8ABC1234)");
    const std::u16string text = platform::systemText(E_ACCESSDENIED);
    EXPECT_TRUE(text.ends_with(u" (0x80070005)") && text.find_first_of(u".\r\n") == Text::npos) << toUtf8(text);
}

TEST(WindowsFiles, AFileInUseIsDenied) {
    const testing::TempFolder folder;
    const std::u16string name = folder.create(u"used", "x");
    const HANDLE other = CreateFileW(com::wide(name.c_str()), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(other, INVALID_HANDLE_VALUE);
    const auto files = ports::systemEnvironment().files;
    testing::expectError([&] { files->appendText(name, u"y"); }, 70, name);
    testing::expectError([&] { files->readText(name); }, 70, name);
    testing::expectError([&] { files->remove(name); }, 70, name);
    CloseHandle(other);
    EXPECT_EQ(folder.bytes(u"used"), "x");
}

TEST(WindowsFiles, AFileThatIsHeldForAMomentIsWaitedFor) {
    const testing::TempFolder folder;
    const std::u16string name = folder.create(u"scanned", "\xFF\xFE");
    const auto files = ports::systemEnvironment().files;
    const auto whileHeld = [&name](const auto& call) {
        const HANDLE held = CreateFileW(com::wide(name.c_str()), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
        std::thread scanner([held] { Sleep(300), CloseHandle(held); });
        EXPECT_NO_THROW(call());
        scanner.join();
    };
    whileHeld([&] { files->appendText(name, u"y"); });
    EXPECT_EQ(files->readText(name), u"y");
    whileHeld([&] { files->remove(name); });
    EXPECT_TRUE(files->list(name).empty());
}

TEST(WindowsFiles, PatternsAreTheSystemsOwnButForHiddenFilesAndShortNames) {
    const testing::TempFolder folder;
    using Names = std::vector<std::u16string>;
    const Names all = {u"a.tmp", u"b.TMP", u"c.tmpold", u"README", u"\u0424\u041E\u0422\u041E1.gif"};
    for (const Text name : all) folder.create(name, "");
    SetFileAttributesW(com::wide(folder.create(u"d.tmp", "").c_str()), FILE_ATTRIBUTE_HIDDEN);
    const auto list = [&](Text pattern) { return ports::systemEnvironment().files->list(folder.name(pattern)); };
    EXPECT_EQ(list(u"*.tmp"), (Names{u"a.tmp", u"b.TMP"}));
    EXPECT_EQ(list(u"*.*"), all);
    EXPECT_EQ(list(u"\u0444\u043E\u0442\u043E*.gif"), Names{all.back()});

    const std::pair<const char16_t*, const char16_t*> matching[] = {
        {u"IMG1.jpg", u"img???.JPG"},   {u"readme", u"*.*"},  {u"readme", u"readme.???"}, {u"a.b.tmp", u"*.tmp"},
        {u"\u0424.gif", u"\u0444.gif"}, {u"ab.b", u"*?b.b*"},
    };
    for (const auto& [name, pattern] : matching) EXPECT_TRUE(platform::matchesPattern(name, pattern)) << toUtf8(name);
    const std::pair<const char16_t*, const char16_t*> others[] = {
        {u"IMG1234.jpg", u"IMG???.jpg"}, {u"a.b", u"a?b"}, {u"a", u""}, {u"", u"a"}};
    for (const auto& [name, pattern] : others) EXPECT_FALSE(platform::matchesPattern(name, pattern)) << toUtf8(name);
}

TEST(WindowsSystem, ATimeThatRoundsToMidnightIsLeftOut) {
    const auto system = ports::systemEnvironment().system;
    constexpr double day = 44'000;
    EXPECT_EQ(system->generalDate({day + 0.999999}), system->generalDate({day + 1}));
    EXPECT_TRUE(system->generalDate({day + 0.75}).starts_with(system->generalDate({day}) + u" "));
}

}  // namespace
}  // namespace quill1xml
