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
    EXPECT_EQ(Bstr(u"").text(), u"");
    const std::string bytes("\0\xFF", 2);
    EXPECT_EQ(Variant::ofBytes(std::as_bytes(std::span(bytes))).bytes(), bytes);
    EXPECT_EQ(Variant::ofBytes({}).bytes(), "");
    EXPECT_EQ(Variant(text).bytes(), "");
}

TEST(SystemErrors, BecomeTheNumbersThatHostsKnow) {
    const struct {
        HRESULT result;
        std::int32_t number;
    } cases[] = {
        {HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND), 53},
        {HRESULT_FROM_WIN32(ERROR_PATH_NOT_FOUND), 76},
        {HRESULT_FROM_WIN32(ERROR_ACCESS_DENIED), 70},
        {HRESULT_FROM_WIN32(ERROR_SHARING_VIOLATION), 70},
        {HRESULT_FROM_WIN32(ERROR_DISK_FULL), 61},
        {HRESULT_FROM_WIN32(ERROR_TOO_MANY_OPEN_FILES), 67},
        {HRESULT_FROM_WIN32(ERROR_INVALID_NAME), 75},
        {static_cast<HRESULT>(0x800A000D), 13},
        {E_FAIL, E_FAIL},
        {DISP_E_TYPEMISMATCH, DISP_E_TYPEMISMATCH},
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
    const auto told = [&object](REFIID interfaceId) {
        return platform::errorOf(E_FAIL, object.get(), interfaceId).description();
    };
    tellThread(u"Too many angles.\r\n");
    EXPECT_EQ(told(platform::iidXmlDomDocument2), u"Too many angles");
    EXPECT_NE(told(platform::iidXmlDomDocument2), u"Too many angles");
    // Of another interface, or of another object: neither believed nor left for later.
    tellThread(u"Old");
    EXPECT_NE(told(IID_IPersistStream), u"Old");
    EXPECT_NE(told(platform::iidXmlDomDocument2), u"Old");
    tellThread(u"Old");
    EXPECT_NE(platform::errorOf(E_FAIL).description(), u"Old");
    EXPECT_NE(told(platform::iidXmlDomDocument2), u"Old");
}

TEST(SystemErrors, WordsStandInASentenceWithTheirCode) {
    EXPECT_EQ(platform::systemText(static_cast<HRESULT>(0x800C0019)),
              u"The certificate of the server is not valid or not trusted (0x800C0019)");
    EXPECT_EQ(platform::systemText(static_cast<HRESULT>(0x800C0005)),
              u"The server or its proxy was not found, or refuses connections (0x800C0005)");
    EXPECT_EQ(platform::systemText(static_cast<HRESULT>(0x8ABC1234)), u"Automation error (0x8ABC1234)");
    const std::u16string text = platform::systemText(E_ACCESSDENIED);
    EXPECT_TRUE(text.ends_with(u" (0x80070005)")) << toUtf8(text);
    EXPECT_EQ(text.find_first_of(u".\r\n"), Text::npos) << toUtf8(text);
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
        std::thread scanner([held] {
            Sleep(300);
            CloseHandle(held);
        });
        EXPECT_NO_THROW(call());
        scanner.join();
    };
    whileHeld([&] { files->appendText(name, u"y"); });
    EXPECT_EQ(files->readText(name), u"y");
    whileHeld([&] { files->remove(name); });
    EXPECT_TRUE(files->list(name).empty());
}

TEST(WindowsFiles, HiddenFilesAndShortNamesAreNotListed) {
    const testing::TempFolder folder;
    folder.create(u"a.tmp", "");
    folder.create(u"b.TMP", "");
    folder.create(u"c.tmpold", "");
    SetFileAttributesW(com::wide(folder.create(u"d.tmp", "").c_str()), FILE_ATTRIBUTE_HIDDEN);
    const auto names = ports::systemEnvironment().files->list(folder.name(u"*.tmp"));
    EXPECT_EQ(names, (std::vector<std::u16string>{u"a.tmp", u"b.TMP"}));
}

TEST(WindowsFiles, PatternsAreTheSystemsOwn) {
    const testing::TempFolder folder;
    const std::vector<std::u16string> all = {u"IMG1.jpg", u"IMG1234.jpg", u"README", u"\u0424\u041E\u0422\u041E1.gif"};
    for (const Text name : all) folder.create(name, "");
    const auto files = ports::systemEnvironment().files;
    EXPECT_EQ(files->list(folder.name(u"*.*")), all);
    EXPECT_EQ(files->list(folder.name(u"\u0444\u043E\u0442\u043E*.gif")), std::vector{all[3]});

    const struct {
        const char16_t* name;
        const char16_t* pattern;
        bool matches;
    } cases[] = {
        {u"IMG1.jpg", u"img???.JPG", true},
        {u"IMG1234.jpg", u"IMG???.jpg", false},
        {u"readme", u"*.*", true},
        {u"readme", u"readme.???", true},
        {u"readme", u"readme.txt", false},
        {u"c.tmpold", u"*.tmp", false},
        {u"a.b.tmp", u"*.tmp", true},
        {u"a.b", u"a?b", false},
        {u"ab.b", u"*?b.b*", true},
        {u"\u0424.gif", u"\u0444.gif", true},
        {u"", u"*", true},
        {u"a", u"", false},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(platform::matchesPattern(c.name, c.pattern), c.matches) << toUtf8(c.name) << ' ' << toUtf8(c.pattern);
    }
}

TEST(WindowsSystem, ATimeThatRoundsToMidnightIsLeftOut) {
    const auto system = ports::systemEnvironment().system;
    constexpr double day = 44'000;
    EXPECT_EQ(system->generalDate({day + 0.999999}), system->generalDate({day + 1}));
    EXPECT_TRUE(system->generalDate({day + 0.75}).starts_with(system->generalDate({day}) + u" "));
}

}  // namespace
}  // namespace quill1xml
