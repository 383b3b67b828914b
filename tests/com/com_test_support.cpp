#include "com_test_support.h"

#include "server/command_block.h"

namespace vantrel {

void PrintTo(const Variant& value, std::ostream* out) {
    static const char* const kinds[] = {"Empty", "Null", "Text", "Int16", "Int32", "Double", "Boolean"};
    *out << kinds[static_cast<int>(value.kind())];
    if (!value.is(Variant::Kind::Empty) && !value.is(Variant::Kind::Null)) {
        *out << " \"" << Escaped(ToText(value)) << "\"";
    }
}

}  // namespace vantrel

namespace vantrel::testing {

void PrintTo(const BlockCase& block, std::ostream* out) {
    *out << block.name << " (" << block.text.size() << " characters)";
}

std::vector<BlockCase> Blocks() {
    Text everyCodeUnit;
    for (unsigned unit = 0; unit <= 0xFFFF; ++unit) {
        everyCodeUnit.push_back(static_cast<char16_t>(unit));
    }
    return {
        {"Authorize", CommandBlock()
                          .AddLine(u"FuelingPosition=07")
                          .AddLine(u"Hose=0")
                          .AddLine(u"MOP=F")
                          .AddLine(u"Limit=999999")
                          .Terminate()
                          .Text()},
        {"LineFeedsOnly",
         CommandBlock().AddLineLf(u"ReaderPosition=05").AddLineLf(u"BeepCounts=03").Terminate().Text()},
        {"CrLfThenLf", CommandBlock().AddLine(u"ReaderPosition=01").AddLineLf(u"KeyData=x").Terminate().Text()},
        {"ControlsInAValue",
         CommandBlock().AddLine(Text(u"PacketData=C") + char16_t(16) + char16_t(7)).Terminate().Text()},
        {"EscSubEtx", Text(u"Message=") + kEsc + u"[1;1H" + kEsc + u"x" + kSub + kEtx + kLf + kCr + kNul + kNul + kNul},
        {"Above127", Text(u"Line=\u00c4\u00e9\u00ff\u0080\u009f\u20ac\uffff\r\n") + kNul},
        {"Empty", Text()},
        {"EveryCodeUnit", everyCodeUnit},
    };
}

Probe::Probe() = default;
Probe::~Probe() = default;

void Probe::Answer(const VARIANT& value) {
    VariantClear(answer_.get());
    VariantCopy(answer_.get(), const_cast<VARIANT*>(&value));  // only read
}

void Probe::Answer(const Variant& value) {
    const com::ScopedVariant converted(value);
    Answer(*converted);
}

HRESULT Probe::QueryInterface(REFIID id, void** object) {
    if (IsEqualIID(id, IID_IUnknown) || IsEqualIID(id, IID_IDispatch)) {
        *object = static_cast<IDispatch*>(this);
        AddRef();
        return S_OK;
    }
    *object = nullptr;
    return E_NOINTERFACE;
}

HRESULT Probe::GetTypeInfoCount(UINT* count) {
    *count = 0;
    return S_OK;
}

HRESULT Probe::GetTypeInfo(UINT, LCID, ITypeInfo** info) {
    *info = nullptr;
    return DISP_E_BADINDEX;
}

HRESULT Probe::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
    for (UINT i = 0; i < count; ++i) {
        lookups.emplace_back(names[i]);
        ids[i] = DISPID_UNKNOWN;
        for (std::size_t known = 0; known < members.size(); ++known) {
            if (_wcsicmp(members[known].c_str(), names[i]) == 0) {
                ids[i] = static_cast<DISPID>(known + 1);
            }
        }
        if (ids[i] == DISPID_UNKNOWN) {
            return DISP_E_UNKNOWNNAME;
        }
    }
    return S_OK;
}

HRESULT Probe::Invoke(DISPID member, REFIID, LCID, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                      EXCEPINFO* exception, UINT*) {
    Invocation seen;
    seen.id = member;
    seen.flags = flags;
    seen.argumentCount = parameters->cArgs;
    seen.named.assign(parameters->rgdispidNamedArgs, parameters->rgdispidNamedArgs + parameters->cNamedArgs);
    seen.resultRequested = result != nullptr;
    if (parameters->cArgs == 1) {
        VARIANT& argument = parameters->rgvarg[0];
        seen.argumentType = V_VT(&argument);
        const VARIANT* value = &argument;
        if (V_VT(&argument) == (VT_BYREF | VT_VARIANT)) {
            value = V_VARIANTREF(&argument);
            seen.referencedType = V_VT(value);
        }
        seen.nullText = V_VT(value) == VT_BSTR && V_BSTR(value) == nullptr;
        seen.argument = com::FromComVariant(*value);
        if (writeBack && V_VT(&argument) == (VT_BYREF | VT_VARIANT)) {
            VARIANT& target = *V_VARIANTREF(&argument);
            VariantClear(&target);
            com::ToComVariant(*writeBack, target);
        }
    }
    invocations.push_back(seen);
    if (outcome == DISP_E_EXCEPTION && raise) {
        raise(*exception);
    }
    if (SUCCEEDED(outcome) && result) {
        VariantCopy(result, answer_.get());
    }
    return outcome;
}

}  // namespace vantrel::testing
