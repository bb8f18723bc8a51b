// Going on where a sending stopped: what another process finds, and what it then does.
#include "store/journal.hpp"
#include "quill1xml/store.hpp"
#include "support/expect_error.hpp"
#include "support/fake_environment.hpp"
#include "support/temp_folder.hpp"

#include <gmock/gmock.h>

#include <functional>

namespace quill1xml {
namespace {

using ::testing::ElementsAre;
using testing::errorOf;
using testing::expectError;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using testing::utf8;

constexpr Text schema =
    uR"(<xs:schema xmlns:xs="http://www.w3.org/2001/XMLSchema" targetNamespace="WebStore">
<xs:element name="Store"><xs:complexType><xs:sequence><xs:any minOccurs="0" maxOccurs="unbounded"
processContents="skip"/></xs:sequence><xs:anyAttribute processContents="skip"/></xs:complexType></xs:element>
</xs:schema>)";

std::string accepted(int number) {
    return "<Receipt ImportNumber=\"" + std::to_string(number) + "\"><Error Number=\"0\"/></Receipt>";
}

/// The system's files, but that nothing waits for the disk, and that writing to the journal fails when told so.
class Disk : public ports::Files {
public:
    int journalWrites = 1'000'000;  ///< that go well
    int journalFailure = -1;        ///< the write that alone fails, counted from 0
    bool journalWaits = false;      ///< what was written to the journal last could be lost with the power

    void appendText(Text fileName, Text text) override {
        if (fileName.ends_with(u"journal")) {
            if (journalWrites-- <= 0 || journalFailure-- == 0) throw runtimeError(RuntimeError::diskFull, fileName);
            journalWaits = true;
        }
        files_->appendText(fileName, text);
    }
    void writeText(Text fileName, Text text) override { files_->writeText(fileName, text); }
    void flush(Text fileName) override { journalWaits = journalWaits && !fileName.ends_with(u"journal"); }
    std::u16string readText(Text fileName) override { return files_->readText(fileName); }
    Bytes readBytes(Text fileName) override { return files_->readBytes(fileName); }
    std::vector<std::u16string> list(Text pattern) override { return files_->list(pattern); }
    void remove(Text fileName) override { files_->remove(fileName); }
    std::unique_ptr<ports::FolderHold> hold(Text folder) override { return files_->hold(folder); }
    std::u16string fileOfUrl(Text url) const override { return files_->fileOfUrl(url); }

private:
    std::shared_ptr<ports::Files> files_ = ports::systemEnvironment().files;
};

class JournalTest : public ::testing::Test {
protected:
    /// Publishes four packets, of which the server answers some; the Send ends with an error unless it answers all.
    void sendSome(Store& store, int answered) {
        begin(store);
        for (int number = 1; number <= answered; ++number) http_->reply(accepted(number));
        if (answered == 4) {
            store.Send();
        } else {
            errorOf([&] { store.Send(); });
        }
        http_->requests.clear();
    }

    void begin(Store& store) {
        store.SetTempFilePath({packets_});
        store.UseJournal({journal_});
        store.SetPacketSize({2});
        store.Create({folder_.create(u"store.xsd", utf8(schema)), 57});
        store.AddAdditionalParameters();
        store.AddEnvelope({u"u", u"p", u"http://shop/a"});
        for (const Text code : {u"A", u"B", u"C", u"D", u"E"}) store.AddTax({.strTaxCode = code});
    }

    std::unique_ptr<Store> newStore() const { return std::make_unique<Store>(environment_); }

    /// As another process would: returns the result of Send.
    std::string resume() {
        resumed_ = newStore();
        resumed_->Resume({packets_, {}, journal_});
        for (int number = 11; number <= 14; ++number) http_->reply(accepted(number));
        const std::string result = utf8(resumed_->Send());
        http_->replies.clear();
        return result;
    }

    std::string left() const {
        std::string names;
        for (const auto& entry : std::filesystem::directory_iterator(folder_.path() / "packets")) {
            names += entry.path().filename().string() + ' ';
        }
        return names;
    }

    bool hasJournal() const { return std::filesystem::exists(folder_.path() / "journal"); }

    /// Whether a folder is another job's.
    bool isHeld(const std::u16string& folder) const {
        const auto other = newStore();
        other->SetTempFilePath({folder});
        try {
            other->UseJournal({folder_.name(u"other journal")});
        } catch (const Error& error) {
            EXPECT_EQ(error.number(), 70) << error.what();
            return true;
        }
        return false;
    }

    std::u16string otherFolder() const {
        std::filesystem::create_directory(folder_.path() / "other");
        return folder_.name(u"other");
    }

    void refuse() const {
        http_->reply("<Receipt ImportNumber=\"0\"><Error Number=\"7\" Description=\"No.\"/></Receipt>");
    }

    void put(Text file, const std::string& bytes) const { folder_.create(file, bytes); }

    testing::TempFolder folder_;
    std::u16string packets_ = folder_.name(u"packets");
    std::u16string journal_ = folder_.name(u"journal");
    std::shared_ptr<Disk> disk_ = std::make_shared<Disk>();
    std::shared_ptr<testing::FakeHttp> http_ = std::make_shared<testing::FakeHttp>();
    ports::Environment environment_ = [this] {
        const testing::FakeEnvironment fake;
        ports::Environment environment = fake.environment();
        environment.files = disk_;
        environment.http = http_;
        std::filesystem::create_directory(folder_.path() / "packets");
        return environment;
    }();
    std::unique_ptr<Store> resumed_;
};

constexpr auto all = "WebStore1.tmp 1,WebStoreTax1.tmp 2,WebStoreTax2.tmp 3,WebStoreTax3.tmp 4";

TEST_F(JournalTest, GoesOnBehindTheLastReceipt) {
    const std::string again = " may have arrived twice: it was posted before, and no receipt came.";
    struct Case {
        int answered;
        std::string result;
        std::string doubt;
    };
    const Case cases[] = {
        {0, "WebStore1.tmp 11,WebStoreTax1.tmp 12,WebStoreTax2.tmp 13,WebStoreTax3.tmp 14", "WebStore1.tmp"},
        {1, "WebStore1.tmp 1,WebStoreTax1.tmp 11,WebStoreTax2.tmp 12,WebStoreTax3.tmp 13", "WebStoreTax1.tmp"},
        {3, "WebStore1.tmp 1,WebStoreTax1.tmp 2,WebStoreTax2.tmp 3,WebStoreTax3.tmp 11", "WebStoreTax3.tmp"},
    };
    for (const Case& c : cases) {
        sendSome(*newStore(), c.answered);
        EXPECT_TRUE(hasJournal());
        EXPECT_EQ(resume(), c.result);
        EXPECT_EQ(utf8(resumed_->LastFailure()), c.doubt + again);
        EXPECT_EQ(http_->requests.size(), 4u - static_cast<unsigned>(c.answered));
        EXPECT_THAT(http_->requests.back().body, HasSubstr("UserName=\"u\"")) << "the head is that of the job";
        resumed_.reset();
        EXPECT_EQ(left(), "");
        EXPECT_FALSE(hasJournal());
    }
    sendSome(*newStore(), 4);
    EXPECT_FALSE(hasJournal());
}

TEST_F(JournalTest, IsSureWhereTheServerHasNothing) {
    struct Unreachable : testing::FakeHttp {
        ports::HttpReply post(Text, std::string_view, std::string_view) override {
            throw ports::NotReached(runtimeError(RuntimeError::automationError, u"nobody there"));
        }
    };
    const auto store = newStore();
    begin(*store);
    for (int i = 0; i < 2; ++i) {
        refuse();
        expectError([&] { store->Send(); }, 7, u"Server: No.");
    }
    environment_.http = std::make_shared<Unreachable>();
    Store unreached(environment_);
    expectError([&] { unreached.Resume({packets_, {}, journal_}); }, 70, u"another job is at work in ");
    store->UseJournal({u""});
    unreached.Resume({packets_, {}, journal_});
    expectError([&] { unreached.Send(); }, 440, u"nobody there");
    unreached.UseJournal({u""});
    environment_.http = http_;
    resume();
    EXPECT_EQ(utf8(resumed_->LastFailure()), "");
}

TEST_F(JournalTest, CutOffAnywhereItKeepsWhatIsWhole) {
    {
        const auto store = newStore();
        sendSome(*store, 2);
    }
    const std::string whole = folder_.bytes(u"journal");
    std::map<std::string, std::string> files;
    for (const auto& entry : std::filesystem::directory_iterator(folder_.path() / "packets")) {
        files[entry.path().filename().string()] = folder_.bytes(u"packets/" + entry.path().filename().u16string());
    }
    std::size_t begun = 0;
    std::set<std::size_t> posted;
    // Odd, so that characters are cut in halves, too.
    constexpr std::size_t step = 5;
    for (std::size_t size = 0; size < whole.size(); size += step) {
        for (const auto& [name, bytes] : files) put(u"packets/" + toUtf16(name), bytes);
        put(u"journal", whole.substr(0, size));
        resumed_.reset();
        http_->requests.clear();
        const store::Journal read(disk_, journal_);
        if (!read.begun()) {
            expectError([&] { resume(); }, applicationError, u"keeps no job");
            EXPECT_NE(left(), "");
            EXPECT_FALSE(begun != 0) << "once there is a head, it stays";
            continue;
        }
        ++begun;
        int known = 0;
        bool doubtful = false;
        for (const auto& [name, packet] : read.packets()) {
            known += packet.state == store::Journal::Packet::State::accepted ? 1 : 0;
            doubtful = doubtful || packet.state == store::Journal::Packet::State::posting;
        }
        // Cut off a second time, behind what this process wrote.
        resumed_ = newStore();
        resumed_->Resume({packets_, {}, journal_});
        errorOf([&] { resumed_->Send(); });
        EXPECT_EQ(resumed_->LastFailure().find(u"arrived twice") != Text::npos, doubtful);
        resumed_.reset();
        resume();
        EXPECT_EQ(http_->requests.size(), 1u + 4u - static_cast<unsigned>(known)) << size;
        EXPECT_FALSE(hasJournal());
        posted.insert(http_->requests.size());
    }
    EXPECT_THAT(posted, ElementsAre(3u, 4u, 5u));
}

TEST_F(JournalTest, RefusesWhatDoesNotFit) {
    {
        const auto store = newStore();
        sendSome(*store, 2);
    }
    const std::string whole = folder_.bytes(u"journal");
    std::string damaged = whole;
    damaged[damaged.size() / 2] = 'x';
    const std::string other = std::string(whole).replace(0, 2, "<?");
    const std::string first = folder_.bytes(u"packets/WebStore1.tmp");
    std::string ofStore58 = first;
    ofStore58[first.find("5\0007") + 2] = '8';
    struct Case {
        const char16_t* file;
        std::string bytes;  ///< empty: the file is missing
        std::u16string error;
    };
    const Case cases[] = {
        {u"journal", "", u" keeps no job: with it nothing was posted. Play the job again from its beginning."},
        {u"journal", damaged, u" is damaged in line "},
        {u"journal", other, u" is not a journal; name another file"},
        {u"packets/WebStore1.tmp", "", u"it was accepted as import 1. Put it back: every packet is sent with its head"},
        {u"packets/WebStore1.tmp", std::string("\xFF\xFEx\0", 4), u"WebStore1.tmp in "},
        {u"packets/WebStore1.tmp", ofStore58, u"WebStore1.tmp is of store 58, the journal of store 57"},
        {u"packets/WebStoreTax1.tmp", "", u"it was accepted as import 2. Put an empty file of that name in its place"},
        {u"packets/WebStoreTax2.tmp", "", u", and it was not sent. Put it back, or an empty file in its place"},
        {u"packets/WebStoreTax3.tmp", "", u"WebStoreTax3.tmp is missing in "},
        {u"store.xsd", "<broken", u"store.xsd"},
    };
    for (const Case& c : cases) {
        const std::string before = folder_.bytes(c.file);
        put(c.file, c.bytes);
        if (c.bytes.empty()) std::filesystem::remove(folder_.path() / c.file);
        const std::string files = left();
        expectError([&] { resume(); }, applicationError, c.error);
        EXPECT_EQ(isHeld(packets_), c.file == Text(u"store.xsd")) << "what Resume refuses is not at work";
        resumed_.reset();
        EXPECT_EQ(left(), files);
        EXPECT_THAT(http_->requests, IsEmpty());
        http_->replies.clear();
        put(c.file, before);
    }
    packets_ = otherFolder();
    expectError([&] { resume(); }, applicationError, u"name the folder that belongs to it");
}

TEST_F(JournalTest, PostsWhatWasEditedAndKeepsOneJobFromTheNext) {
    {
        const auto store = newStore();
        sendSome(*store, 2);
        // The store that failed, another one, and one in another folder with the same journal.
        expectError([&] { store->Create({u"schema", 57}); }, applicationError, u" is not finished, says its journal ");
    }
    const auto store = newStore();
    store->SetTempFilePath({packets_});
    store->UseJournal({journal_});
    ASSERT_TRUE(store->unfinishedJob());
    EXPECT_THAT(store->unfinishedJob()->accepted, ElementsAre(u"WebStore1.tmp", u"WebStoreTax1.tmp"));
    expectError([&] { store->Create({u"schema", 57}); }, applicationError, u"Resume and Send send what is left");
    EXPECT_THAT(left(), HasSubstr("WebStoreTax3.tmp"));
    store->UseJournal({u""});

    const std::string before = folder_.bytes(u"packets/WebStoreTax1.tmp");
    put(u"packets/WebStoreTax1.tmp", before + before.substr(2));
    EXPECT_EQ(resume(), "WebStore1.tmp 1,WebStoreTax1.tmp 11,WebStoreTax2.tmp 12,WebStoreTax3.tmp 13");
    EXPECT_THAT(utf8(resumed_->LastFailure()),
                HasSubstr("WebStoreTax1.tmp was accepted as import 2, has changed since then, and is posted again."));
}

TEST_F(JournalTest, EndsADeletionThatWasInterrupted) {
    {
        const auto store = newStore();
        sendSome(*store, 4);
    }
    {
        store::Journal journal(disk_, journal_);
        journal.begin(environment_.files->hold(folder_.name(u"packets"))->folder(), 57, u"");
        journal.deleting();
    }
    put(u"packets/WebStoreTax2.tmp", "\xFF\xFE<\0T");
    resumed_ = newStore();
    resumed_->Resume({packets_, {}, journal_});
    EXPECT_EQ(left(), ".quill1xml.lock ");
    EXPECT_FALSE(hasJournal());
    EXPECT_EQ(utf8(resumed_->Send()), "");
}

TEST_F(JournalTest, WithoutRoomNothingIsPostedAndNothingIsForgotten) {
    for (int room = 0; room < 11; ++room) {
        const auto store = newStore();
        begin(*store);
        disk_->journalWrites = room;
        for (int number = 1; number <= 4; ++number) http_->reply(accepted(number));
        int events = 0;
        store->onPacketUploaded([&events](Text, Long) { ++events; });
        try {
            store->Send();
        } catch (const Error& error) {
            EXPECT_EQ(error.number(), 61) << error.what();
        }
        disk_->journalWrites = 1'000'000;
        // Head, list, and before and after each packet.
        EXPECT_EQ(http_->requests.size(), static_cast<std::size_t>(std::min(4, std::max(0, room - 1) / 2)));
        EXPECT_EQ(events, static_cast<int>(http_->requests.size()));
        EXPECT_EQ(utf8(store->Send()), all) << "the same process knows what it sent";
        EXPECT_EQ(http_->requests.size(), 4u);
        http_->requests.clear();
    }
}

TEST_F(JournalTest, DoubtStaysWhateverBecomesOfTheNextTry) {
    const std::string again = " may have arrived twice: it was posted before, and no receipt came.";
    sendSome(*newStore(), 1);
    // The second try is refused; the first may have arrived all the same.
    resumed_ = newStore();
    resumed_->Resume({packets_, {}, journal_});
    refuse();
    expectError([&] { resumed_->Send(); }, 7, u"Server: No.");
    EXPECT_THAT(utf8(resumed_->LastFailure()), ::testing::EndsWith("WebStoreTax1.tmp" + again));
    resumed_.reset();
    // The third one is accepted, and ends before it can tell.
    resumed_ = newStore();
    resumed_->Resume({packets_, {}, journal_});
    http_->reply(accepted(5));
    expectError([&] { resumed_->Send(); }, 440, u"no connection");
    EXPECT_THAT(utf8(resumed_->LastFailure()), ::testing::EndsWith("WebStoreTax1.tmp" + again));
    resumed_.reset();
    EXPECT_EQ(resume(), "WebStore1.tmp 1,WebStoreTax1.tmp 5,WebStoreTax2.tmp 11,WebStoreTax3.tmp 12");
    EXPECT_EQ(utf8(resumed_->LastFailure()), "WebStoreTax1.tmp" + again + "\r\nWebStoreTax2.tmp" + again);
}

TEST_F(JournalTest, HoldsTheFolderThatItsJobIsIn) {
    const std::u16string other = otherFolder();
    const auto store = newStore();
    store->SetTempFilePath({packets_});
    EXPECT_FALSE(isHeld(packets_)) << "without a journal nothing is kept from others";
    store->UseJournal({journal_});
    EXPECT_TRUE(isHeld(packets_));
    store->SetTempFilePath({other});
    EXPECT_FALSE(isHeld(packets_));
    EXPECT_TRUE(isHeld(other));
    store->UseJournal({u""});
    EXPECT_FALSE(isHeld(other));
}

TEST_F(JournalTest, IsOfOneFolderAndOneStore) {
    sendSome(*newStore(), 2);
    const std::u16string other = otherFolder();
    put(u"other/WebStoreTax1.tmp", folder_.bytes(u"packets/WebStoreTax1.tmp"));
    const std::string before = left();
    const std::pair<std::u16string, Long> cases[] = {{other, 57}, {packets_, 58}};
    for (const auto& [folder, storeId] : cases) {
        const auto store = newStore();
        store->SetTempFilePath({folder});
        store->SetStoreID({storeId});
        store->UseJournal({journal_});
        store->CleanupTempFiles({u"WebStoreOther"});
        EXPECT_TRUE(hasJournal()) << "only a deletion of everything ends the job";
        expectError([&] { store->Send({.strWebStoreSchemaSource = folder_.name(u"store.xsd")}); }, applicationError,
                    u" for store 57: use another file for this one.");
    }
    EXPECT_THAT(http_->requests, IsEmpty());
    EXPECT_EQ(left(), before);
    // A deletion to be ended in one folder is no leave to begin in another.
    store::Journal(disk_, journal_).deleting();
    const auto store = newStore();
    store->SetTempFilePath({other});
    store->UseJournal({journal_});
    expectError([&] { store->Create({folder_.name(u"store.xsd"), 57}); }, applicationError, u" is not finished, says");
    EXPECT_TRUE(hasJournal());
}

TEST_F(JournalTest, OneProcessDoesOneJobAfterTheOther) {
    {
        const auto store = newStore();
        store->SetTempFilePath({packets_});
        store->UseJournal({journal_});
        store->SendTempFile({u"Quote57_"});
        EXPECT_FALSE(hasJournal()) << "where there is nothing to send no job begins";
        sendSome(*store, 4);
        store->NewJob();
        store->Create({folder_.name(u"store.xsd"), 57});
        store->AddAdditionalParameters();
        store->AddEnvelope({u"v", u"p", u"http://shop/a"});
        for (const Text code : {u"A", u"B", u"C"}) store->AddTax({.strTaxCode = code});
        http_->reply(accepted(7));
        expectError([&] { store->Send(); }, 440, u"no connection");
        http_->requests.clear();
    }
    EXPECT_EQ(resume(), "WebStore1.tmp 7,WebStoreTax1.tmp 11,WebStoreTax2.tmp 12");
    EXPECT_THAT(http_->requests.back().body, HasSubstr("UserName=\"v\""));
}

TEST_F(JournalTest, MissesThePacketsOfEachKind) {
    {
        const auto store = newStore();
        begin(*store);
        for (const Text code : {u"A", u"B", u"C", u"D", u"E"}) store->AddCurrency({.strCurrencyCode = code});
        expectError([&] { store->Send(); }, 440, u"no connection");
    }
    http_->requests.clear();
    for (const Text file : {u"WebStoreTax1.tmp", u"WebStoreTax3.tmp", u"WebStoreCurrency1.tmp"}) {
        const std::u16string name = u"packets/" + std::u16string(file);
        const std::string bytes = folder_.bytes(name);
        std::filesystem::remove(folder_.path() / std::filesystem::path(name));
        expectError([&] { resume(); }, applicationError, std::u16string(file) + u" is missing in ");
        http_->replies.clear();
        put(name, bytes);
    }
    EXPECT_THAT(http_->requests, IsEmpty());
}

TEST_F(JournalTest, GoesOnWithAnotherSchemaWhereOneIsGiven) {
    sendSome(*newStore(), 3);
    std::filesystem::remove(folder_.path() / "store.xsd");
    resumed_ = newStore();
    resumed_->Resume({packets_, folder_.create(u"moved.xsd", utf8(schema)), journal_});
    http_->reply(accepted(11));
    EXPECT_EQ(resumed_->Send(), u"WebStore1.tmp 1,WebStoreTax1.tmp 2,WebStoreTax2.tmp 3,WebStoreTax3.tmp 11");
}

TEST_F(JournalTest, IsOnTheDiskBeforeAnythingIsPosted) {
    struct Watching : testing::FakeHttp {
        explicit Watching(const Disk& watched) : disk(watched) {}
        ports::HttpReply post(Text url, std::string_view contentType, std::string_view body) override {
            EXPECT_FALSE(disk.journalWaits);
            return FakeHttp::post(url, contentType, body);
        }
        const Disk& disk;
    };
    http_ = std::make_shared<Watching>(*disk_);
    environment_.http = http_;
    sendSome(*newStore(), 4);
}

TEST_F(JournalTest, ReadsOnlyWhatWasWrittenWhole) {
    // The power may go in the middle of the heading; then the next job has the journal to itself.
    const auto beginnings = {std::string("\xFF"), std::string("\xFF\xFE"), std::string("\xFF\xFEj\0o", 5),
                             std::string("\xFF\xFEj\0o\0u\0r\0n\0a\0l\0 \0001\0\t\0C", 23)};
    for (const std::string& bytes : beginnings) {
        SCOPED_TRACE(bytes.size());
        put(u"journal", bytes);
        sendSome(*newStore(), 3);
        EXPECT_EQ(resume(), "WebStore1.tmp 1,WebStoreTax1.tmp 2,WebStoreTax2.tmp 3,WebStoreTax3.tmp 11");
        resumed_.reset();
    }

    // Names that would fall apart into other values or lines.
    store::Journal journal(disk_, journal_);
    const std::pair<Text, Text> names[] = {{u"a\tb", u"c"}, {u"a", u"b\nc"}};
    for (const auto& [folder, source] : names) {
        expectError([&] { journal.begin(folder, 57, source); }, 5, u"control characters");
    }
    EXPECT_FALSE(hasJournal());
}

TEST_F(JournalTest, AReceiptThatCannotBeNotedEndsTheSending) {
    const auto store = newStore();
    begin(*store);
    for (int number = 1; number <= 4; ++number) http_->reply(accepted(number));
    disk_->journalFailure = 3;  // behind the head, the list and the first post
    expectError([&] { store->Send(); }, 61, u"journal");
    EXPECT_EQ(http_->requests.size(), 1u) << "or a later process would post it again unasked";
    EXPECT_EQ(utf8(store->Send()), all);
    EXPECT_EQ(http_->requests.size(), 4u);
}

TEST_F(JournalTest, WhatWasAcceptedStaysSoWhereTheArchiveFails) {
    {
        const auto store = newStore();
        begin(*store);
        http_->reply(accepted(1));
        expectError([&] { store->Send({.strArchivePath = folder_.name(u"none")}); }, 76, u"none");
        EXPECT_THAT(utf8(store->LastFailure()), ::testing::StartsWith("WebStore1.tmp: Path not found: "))
            << "the server is not to blame";
        http_->requests.clear();
    }
    EXPECT_EQ(resume(), "WebStore1.tmp 1,WebStoreTax1.tmp 11,WebStoreTax2.tmp 12,WebStoreTax3.tmp 13");
    EXPECT_EQ(http_->requests.size(), 3u);
    EXPECT_EQ(utf8(resumed_->LastFailure()), "");
}

}  // namespace
}  // namespace quill1xml
