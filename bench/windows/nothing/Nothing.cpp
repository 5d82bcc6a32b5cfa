// A class that does nothing, in a DLL that is built like the component: what loading, creating and calling cost by
// themselves. It answers FootnoteList's interface.
#include "bench/windows/nothing/Nothing.h"
#include "V5Strings.h"
#include "V5StringsMembers.h"
#include "com/AutomationObject.h"
#include "com/Component.h"

namespace v5 {

namespace {

class Nothing final : public AutomationObject<Nothing, _FootnoteList, ::FootnoteList> {
  public:
    static constexpr wchar_t kProgId[] = L"V5Bench.Nothing";

    STDMETHODIMP get_Count(long* result) override {
        return Return(result, [] { return 0; });
    }
    STDMETHODIMP CreateOrGetFootnote(IRaiseMsg*, BSTR, BSTR*) override { return E_NOTIMPL; }
    STDMETHODIMP GetAllFootnotes(IDispatch**) override { return E_NOTIMPL; }
};

constexpr ClassEntry kClasses[] = {
    {&bench::kNothing, Nothing::kProgId, L"A class that does nothing", &Nothing::Create}};

}  // namespace

const Component& ThisComponent() {
    static constexpr Component component = {&LIBID_V5Strings, 1, 0, kClasses};
    return component;
}

}  // namespace v5
