// Footnote marks through the interface, against the scripting run-time's dictionary in the hands of the same client,
// and against a tenth of the footnotes.
#include <vector>

#include "V5Strings.h"
#include "bench/Bench.h"
#include "bench/windows/Com.h"

// Scripting.Dictionary's interface, as far as it is used here. Its header is not part of the build's SDK.
struct IDictionary : IDispatch {
    virtual HRESULT STDMETHODCALLTYPE putref_Item(VARIANT* key, VARIANT* item) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_Item(VARIANT* key, VARIANT* item) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_Item(VARIANT* key, VARIANT* item) = 0;
};
__CRT_UUID_DECL(IDictionary, 0x42C642C1, 0x97E1, 0x11CF, 0x97, 0x8F, 0x00, 0xA0, 0x24, 0x63, 0xE0, 0x6F)

namespace v5::bench {
namespace {

constexpr size_t kTexts = 100'000;
constexpr int kRounds = 10;  // the first creates the footnotes, the others repeat them

void AskList(const std::vector<_variant_t>& texts, size_t count) {
    const auto list = Create<_FootnoteList>(L"V5Strings.FootnoteList");
    for (int round = 0; round < kRounds; ++round) {
        for (size_t i = 0; i < count; ++i) {
            BSTR mark = nullptr;
            Check(list->CreateOrGetFootnote(nullptr, V_BSTR(&texts[i]), &mark), "CreateOrGetFootnote");
            SysFreeString(mark);
        }
    }
}

// The quickest use of the dictionary: asking for a missing key makes an empty entry, so that one call does.
void AskDictionary(const std::vector<_variant_t>& texts, size_t count) {
    const auto dictionary = Create<IDictionary>(L"Scripting.Dictionary");
    for (int round = 0; round < kRounds; ++round) {
        for (size_t i = 0; i < count; ++i) {
            auto* key = const_cast<_variant_t*>(&texts[i]);
            _variant_t mark;
            Check(dictionary->get_Item(key, &mark), "get_Item");
            if (V_VT(&mark) == VT_EMPTY) {
                mark = (L"[" + std::to_wstring(i + 1) + L"]").c_str();
                Check(dictionary->put_Item(key, &mark), "put_Item");
            }
        }
    }
}

void Footnotes(Table& table) {
    std::vector<_variant_t> texts;
    for (size_t i = 0; i < kTexts; ++i) {
        texts.emplace_back((L"Substituted, run " + std::to_wstring(i)).c_str());
    }
    table.Compare(
        {.name = "footnotes: 100,000 and 900,000 repeats / Scripting.Dictionary",
         .goal = 0.5,
         .runs = 2,
         .operations = kRounds * static_cast<double>(kTexts)},
        [&] { AskList(texts, kTexts); }, [&] { AskDictionary(texts, kTexts); });
    // Ten times as many footnotes are to cost at most eleven times as much: equal work on both sides, so that both meet
    // the same noise.
    table.Compare(
        {.name = "footnotes: one list of 100,000 / ten of 10,000",
         .goal = 1.1,
         .runs = 21,
         .operations = kRounds * static_cast<double>(kTexts)},
        [&] { AskList(texts, kTexts); },
        [&] {
            for (int list = 0; list < 10; ++list) {
                AskList(texts, kTexts / 10);
            }
        });
}

const Benchmark registered("footnotes", Footnotes);

}  // namespace
}  // namespace v5::bench
