// The public classes of V5Strings.dll: what can be created, and what registration writes.
#include "V5Strings.h"
#include "com/Component.h"
#include "config/DahsIniEntries.h"
#include "config/DahsIniEntry.h"
#include "config/DahsIniMain.h"
#include "footnotes/Footnote.h"
#include "footnotes/FootnoteList.h"
#include "log/LogFileClass.h"
#include "productinfo/NimboHelp.h"
#include "security/NimboSecurity.h"
#include "surface/NimboErrorNumbers.h"
#include "surface/NimboStringsMain.h"

namespace v5 {

namespace {

// One row: the implementation, its published coclass, and the words that registry tools show.
template <class Implementation, class CoClass>
constexpr ClassEntry Row(const wchar_t* description) {
    return {&__uuidof(CoClass), Implementation::kProgId, description, &Implementation::Create};
}

constexpr ClassEntry kClasses[] = {
    Row<NimboStringsMain, ::NimboStringsMain>(L"V5Strings dialogs and product information"),
    Row<LogFileClass, ::LogFileClass>(L"V5Strings log file"),
    Row<NimboErrorNumbers, ::NimboErrorNumbers>(L"V5Strings error numbers"),
    Row<DahsIniMain, ::DahsIniMain>(L"V5Strings site configuration"),
    Row<DahsIniEntries, ::DahsIniEntries>(L"V5Strings DAHS entries"),
    Row<DahsIniEntry, ::DahsIniEntry>(L"V5Strings DAHS entry"),
    Row<NimboSecurity, ::NimboSecurity>(L"V5Strings user security"),
    Row<NimboHelp, ::NimboHelp>(L"V5Strings product help"),
    Row<FootnoteList, ::FootnoteList>(L"V5Strings footnote list"),
    Row<Footnote, ::Footnote>(L"V5Strings footnote"),
};

}  // namespace

const Component& ThisComponent() {
    static constexpr Component component = {&LIBID_V5Strings, 1, 0, kClasses};
    return component;
}

}  // namespace v5
