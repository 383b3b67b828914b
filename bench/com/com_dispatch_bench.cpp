// What a server call through the COM backend costs against a loop of raw
// IDispatch::Invoke calls on the same object, the simulator DLL created by
// ProgID. Prints nanoseconds per call and the ratio; asserts nothing.

#include "com/com_dispatch.h"
#include "com/com_variant.h"
#include "server/command_block.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>

namespace {

using Clock = std::chrono::steady_clock;

// The best of five rounds: the machine is shared, the best round is the
// one least disturbed.
double NanosecondsPerCall(int calls, const std::function<void()>& call) {
    for (int i = 0; i < calls / 10; ++i) {
        call();  // warm up
    }
    double best = 0;
    for (int round = 0; round < 5; ++round) {
        const auto start = Clock::now();
        for (int i = 0; i < calls; ++i) {
            call();
        }
        const double each = std::chrono::duration<double, std::nano>(Clock::now() - start).count() / calls;
        best = round == 0 || each < best ? each : best;
    }
    return best;
}

DISPID Lookup(IDispatch* dispatch, const wchar_t* member) {
    LPOLESTR names[] = {const_cast<LPOLESTR>(member)};
    DISPID id = DISPID_UNKNOWN;
    dispatch->GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &id);
    return id;
}

void Row(const char* what, double raw, double backend) {
    std::printf("%-44s %9.0f ns %9.0f ns %7.2fx\n", what, raw, backend, backend / raw);
}

}  // namespace

int main(int argc, char** argv) {
    using namespace vantrel;
    const int calls = argc > 1 ? std::atoi(argv[1]) : 20000;
    try {
        auto object = com::ComObject::Create("Vantrel.Application");
        IDispatch* dispatch = object->dispatch();
        const Text blockText = CommandBlock()
                                   .AddLine(u"FuelingPosition=07")
                                   .AddLine(u"Hose=0")
                                   .AddLine(u"MOP=F")
                                   .AddLine(u"Limit=999999")
                                   .Terminate()
                                   .Text();
        const Variant block = Variant::OfText(blockText);

        std::printf("%d calls a round, best of 5 rounds; Vantrel.Application in process (simulator DLL)\n", calls);
        std::printf("%-44s %12s %12s %8s\n", "call", "raw Invoke", "backend", "ratio");

        // Text result, no argument: raw with the DISPID looked up once.
        const DISPID versions = Lookup(dispatch, L"SystemVersions");
        const auto rawGet = [&] {
            VARIANT result;
            VariantInit(&result);
            DISPPARAMS none{nullptr, nullptr, 0, 0};
            dispatch->Invoke(versions, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD | DISPATCH_PROPERTYGET, &none,
                             &result, nullptr, nullptr);
            VariantClear(&result);
        };
        const auto rawGetByName = [&] {
            const DISPID id = Lookup(dispatch, L"SystemVersions");
            VARIANT result;
            VariantInit(&result);
            DISPPARAMS none{nullptr, nullptr, 0, 0};
            dispatch->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD | DISPATCH_PROPERTYGET, &none, &result,
                             nullptr, nullptr);
            VariantClear(&result);
        };
        const double backendGet = NanosecondsPerCall(calls, [&] { object->Call("SystemVersions"); });
        Row("result = SystemVersions()", NanosecondsPerCall(calls, rawGet), backendGet);
        Row("  the same, raw looking up the name each call", NanosecondsPerCall(calls, rawGetByName), backendGet);

        // Property put of a block: raw with one BSTR made once.
        const DISPID authorize = Lookup(dispatch, L"Authorize");
        VARIANT value;
        VariantInit(&value);
        V_VT(&value) = VT_BSTR;
        V_BSTR(&value) = com::AllocateText(blockText);
        const auto rawPut = [&] {
            DISPID named = DISPID_PROPERTYPUT;
            DISPPARAMS parameters{&value, &named, 1, 1};
            dispatch->Invoke(authorize, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYPUT, &parameters, nullptr,
                             nullptr, nullptr);
        };
        Row("Authorize = block (60 characters)", NanosecondsPerCall(calls, rawPut),
            NanosecondsPerCall(calls, [&] { object->Put("Authorize", block); }));
        VariantClear(&value);

        // By reference, as the dispenser information asks.
        const DISPID information = Lookup(dispatch, L"DispenserInformation");
        const auto rawByRef = [&] {
            VARIANT held;
            VariantInit(&held);
            V_VT(&held) = VT_I2;
            V_I2(&held) = 7;
            VARIANT reference;
            VariantInit(&reference);
            V_VT(&reference) = VT_BYREF | VT_VARIANT;
            V_VARIANTREF(&reference) = &held;
            VARIANT result;
            VariantInit(&result);
            DISPPARAMS parameters{&reference, nullptr, 1, 0};
            dispatch->Invoke(information, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD | DISPATCH_PROPERTYGET,
                             &parameters, &result, nullptr, nullptr);
            VariantClear(&result);
            VariantClear(&held);
        };
        Variant position = Variant::OfInt16(7);
        Row("result = DispenserInformation(position ByRef)", NanosecondsPerCall(calls, rawByRef),
            NanosecondsPerCall(calls, [&] { object->CallByRef("DispenserInformation", position); }));
    } catch (const RuntimeError& error) {
        std::fprintf(stderr, "com_dispatch_bench: error %d: %s\n", error.number(), error.description().c_str());
        return 1;
    }
    return 0;
}
