// What the type library tells hosts that compile against it.
#include "hosts/client.hpp"

#include "automation/classes.hpp"

namespace quill1xml {
namespace {

using namespace testing;
using automation::findIdentity;
using automation::guidOf;
using com::ComPtr;
using com::query;

/// What the type library says of a member or an event.
void expectDescribed(ITypeInfo* info, UINT index, Long dispid, std::string_view name, INVOKEKIND kind,
                     automation::ResultType result, std::span<const Parameter> parameters) {
    FUNCDESC* function = nullptr;
    ASSERT_EQ(info->GetFuncDesc(index, &function), S_OK);
    com::Bstr names[64];
    BSTR raw[64] = {};
    UINT count = 0;
    EXPECT_EQ(info->GetNames(function->memid, raw, 64, &count), S_OK);
    for (UINT i = 0; i < count; ++i) *names[i].put() = raw[i];
    EXPECT_EQ(function->memid, dispid);
    EXPECT_EQ(function->invkind, kind);
    constexpr VARTYPE results[] = {VT_VOID, VT_I4, VT_I2, VT_R8, VT_DATE, VT_BSTR, VT_VARIANT, VT_PTR, VT_VARIANT};
    EXPECT_EQ(function->elemdescFunc.tdesc.vt, results[static_cast<std::size_t>(result)]) << name;
    // The library keeps one spelling of names that differ in case only.
    EXPECT_EQ(_wcsicmp(names[0].get(), com::wide(toUtf16(name).c_str())), 0) << name;
    ASSERT_EQ(count, parameters.size() + 1) << name;
    ASSERT_EQ(static_cast<std::size_t>(function->cParams), parameters.size()) << name;
    constexpr VARTYPE types[] = {VT_BSTR, VT_I2,      VT_I4,      VT_R8,       VT_BOOL,    VT_DATE,
                                 VT_CY,   VT_VARIANT, VT_VARIANT, VT_DISPATCH, VT_DISPATCH};
    for (std::size_t i = 0; i < parameters.size(); ++i) {
        const ELEMDESC& described = function->lprgelemdescParam[i];
        EXPECT_EQ(_wcsicmp(names[i + 1].get(), com::wide(toUtf16(parameters[i].name).c_str())), 0) << name;
        EXPECT_EQ((described.paramdesc.wParamFlags & PARAMFLAG_FOPT) == 0, parameters[i].required)
            << name << ' ' << parameters[i].name;
        if (described.tdesc.vt == VT_USERDEFINED) {
            EXPECT_EQ(parameters[i].type, ParameterType::integer) << parameters[i].name;
        } else if (described.tdesc.vt != VT_VARIANT || parameters[i].required) {
            EXPECT_EQ(described.tdesc.vt, types[static_cast<std::size_t>(parameters[i].type)]) << parameters[i].name;
        }
    }
    info->ReleaseFuncDesc(function);
}

/// The value that a host compiled against the library passes for a parameter it leaves out.
Arg compiledDefault(const ELEMDESC& described) {
    if ((described.paramdesc.wParamFlags & PARAMFLAG_FHASDEFAULT) != 0) {
        Arg result = Arg::of(VT_EMPTY);
        VariantCopy(const_cast<VARIANT*>(&result.get()), &described.paramdesc.pparamdescex->varDefaultValue);
        return result;
    }
    return described.tdesc.vt == VT_VARIANT ? Arg::missing() : Arg::of(described.tdesc.vt);
}

TEST_F(Client, TheTypeLibraryDescribesEveryMember) {
    for (const automation::Class* each : automation::classes()) {
        const auto object = server.create(each->name);
        ComPtr<ITypeInfo> info;
        ASSERT_EQ(object->GetTypeInfo(0, english, info.put()), S_OK);
        TYPEATTR* attributes = nullptr;
        ASSERT_EQ(info->GetTypeAttr(&attributes), S_OK);
        EXPECT_EQ(attributes->guid, guidOf(findIdentity(each->name)->members));
        EXPECT_EQ(attributes->typekind, TKIND_DISPATCH);
        ASSERT_EQ(attributes->cFuncs, each->members.size());
        info->ReleaseTypeAttr(attributes);
        for (UINT i = 0; i < each->members.size(); ++i) {
            const automation::Member& member = each->members[i];
            expectDescribed(info.get(), i, member.dispid, member.name,
                            member.kind == automation::MemberKind::method ? INVOKE_FUNC : INVOKE_PROPERTYGET,
                            member.result, member.parameters);
        }

        ComPtr<ITypeInfo> coclass;
        const auto provider = query<IProvideClassInfo2>(object.get(), IID_IProvideClassInfo2);
        ASSERT_EQ(provider->GetClassInfo(coclass.put()), S_OK);
        GUID sourceId;
        EXPECT_EQ(provider->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, &sourceId),
                  each->events.empty() ? E_INVALIDARG : S_OK);
        if (each->events.empty()) continue;
        int flags = 0;
        HREFTYPE reference = 0;
        ComPtr<ITypeInfo> source;
        ASSERT_EQ(coclass->GetImplTypeFlags(1, &flags), S_OK);
        EXPECT_EQ(flags, IMPLTYPEFLAG_FDEFAULT | IMPLTYPEFLAG_FSOURCE);
        ASSERT_EQ(coclass->GetRefTypeOfImplType(1, &reference), S_OK);
        ASSERT_EQ(coclass->GetRefTypeInfo(reference, source.put()), S_OK);
        ASSERT_EQ(source->GetTypeAttr(&attributes), S_OK);
        EXPECT_EQ(attributes->guid, sourceId);
        source->ReleaseTypeAttr(attributes);
        for (UINT i = 0; i < each->events.size(); ++i) {
            const automation::Event& event = each->events[i];
            expectDescribed(source.get(), i, event.dispid, event.name, INVOKE_FUNC, automation::ResultType::nothing,
                            event.parameters);
        }
    }
}

// A host compiled against the library fills in its defaults: they must mean what leaving out means.
TEST_F(Client, CompiledDefaultsMeanLeftOut) {
    unsigned written = 0;
    for (const automation::Member& member : automation::storeClass().members) {
        // The envelope holds the time.
        if (member.record == nullptr || member.name == "AddEnvelope") continue;
        std::string packets[2];
        for (const bool compiled : {false, true}) {
            const TempFolder folder;
            const auto store = server.create("Store");
            ComPtr<ITypeInfo> info;
            ASSERT_EQ(store->GetTypeInfo(0, english, info.put()), S_OK);
            mustCall(store.get(), u"SetTempFilePath", {folder.name(u"").c_str()});
            FUNCDESC* function = nullptr;
            const auto index = static_cast<UINT>(&member - automation::storeClass().members.data());
            ASSERT_EQ(info->GetFuncDesc(index, &function), S_OK);
            Args args;
            for (std::size_t i = 0; i < member.parameters.size(); ++i) {
                if (member.parameters[i].required) {
                    args.push_back(1);
                } else {
                    args.push_back(compiled ? compiledDefault(function->lprgelemdescParam[i]) : Arg::missing());
                }
            }
            info->ReleaseFuncDesc(function);
            const Outcome outcome = invoke(store.get(), member.dispid, args);
            std::string& result = packets[compiled ? 1 : 0];
            result = outcome.description;
            for (const auto& file : std::filesystem::directory_iterator(folder.path())) {
                result += packet(folder, file.path().filename().u16string());
            }
        }
        EXPECT_EQ(packets[1], packets[0]) << member.name;
        if (!packets[0].empty()) ++written;
    }
    EXPECT_GE(written, 10u);
}

}  // namespace
}  // namespace quill1xml
