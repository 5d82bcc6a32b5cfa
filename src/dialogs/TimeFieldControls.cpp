#include "dialogs/TimeFieldControls.h"

#include <windows.h>

#include <commctrl.h>

#include <algorithm>

#include "dialogs/ControlIds.h"

namespace v5 {

namespace {

constexpr TimePart kParts[] = {TimePart::Hour, TimePart::Minute, TimePart::AmPm};
constexpr const wchar_t* kLabels[] = {L"&Hour:", L"M&inute:", L"&AM/PM:"};

constexpr int kFieldWidth = 40;
constexpr int kFieldGap = 10;
static_assert(TimeFieldControls::kWidth == 3 * kFieldWidth + 2 * kFieldGap);

const wchar_t* LabelOf(TimePart part) {
    return kLabels[static_cast<int>(part)];
}

}  // namespace

void TimeFieldControls::SetVisible(bool time, bool minutes) {
    mShowsTime = time;
    mShowsMinutes = minutes;
}

bool TimeFieldControls::IsShown(TimePart part) const {
    switch (part) {
        case TimePart::Minute:
            return mShowsMinutes;
        case TimePart::AmPm:
            return mShowsTime && !mFields.Use24Hour();
        default:
            return mShowsTime;
    }
}

void TimeFieldControls::Create() {
    for (const TimePart part : kParts) {
        mForm.AddControl({ids::TimeLabel(part), WC_STATICW, LabelOf(part)});
        mForm.AddControl({ids::TimeText(part), WC_EDITW, L"", WS_TABSTOP | ES_CENTER, WS_EX_CLIENTEDGE});
        const HWND upDown =
            mForm.AddControl({ids::TimeUpDown(part), UPDOWN_CLASSW, L"", UDS_ALIGNRIGHT | UDS_ARROWKEYS | UDS_WRAP});
        // One step at a time, however long the button is held.
        UDACCEL steps{0, 1};
        SendMessageW(upDown, UDM_SETACCEL, 1, reinterpret_cast<LPARAM>(&steps));
        mForm.HookControl(ids::TimeText(part), [this, part](UINT message, WPARAM wParam, LPARAM) {
            return OnFieldMessage(part, message, wParam);
        });
    }
    Refresh();
}

void TimeFieldControls::LayOut(int left, int top) {
    for (const TimePart part : kParts) {
        mForm.Place(ids::TimeLabel(part), UnitRect{left, top, kFieldWidth, units::kLabelHeight});
        mForm.PlaceField(ids::TimeText(part),
                         UnitRect{left, top + units::kLabelHeight + 2, kFieldWidth, units::kFieldHeight});
        // A new buddy makes room for the up-down control at its right end.
        SendMessageW(mForm.Control(ids::TimeUpDown(part)), UDM_SETBUDDY,
                     reinterpret_cast<WPARAM>(mForm.Control(ids::TimeText(part))), 0);
        if (part != TimePart::Minute || mShowsMinutes) {
            left += kFieldWidth + kFieldGap;
        }
    }
}

void TimeFieldControls::Refresh() {
    for (const TimePart part : kParts) {
        Show(part);
        for (const int id : {ids::TimeLabel(part), ids::TimeText(part), ids::TimeUpDown(part)}) {
            mForm.ShowControl(id, IsShown(part));
        }
    }
}

void TimeFieldControls::Enable(bool enabled) {
    for (const TimePart part : kParts) {
        for (const int id : {ids::TimeLabel(part), ids::TimeText(part), ids::TimeUpDown(part)}) {
            mForm.EnableControl(id, enabled);
        }
    }
}

bool TimeFieldControls::OnCommand(int id, int notification) {
    const auto* part =
        std::find_if(std::begin(kParts), std::end(kParts), [id](TimePart each) { return ids::TimeText(each) == id; });
    if (part == std::end(kParts)) {
        return false;
    }
    if (notification == EN_CHANGE && !mShowing) {
        mFields.SetText(*part, mForm.TextOf(id));
    } else if (notification == EN_KILLFOCUS) {
        mFields.Leave(*part);
        Show(*part);
    }
    return true;
}

std::optional<LRESULT> TimeFieldControls::OnNotify(const NMHDR& notice) {
    const auto* part = std::find_if(std::begin(kParts), std::end(kParts), [&](TimePart each) {
        return ids::TimeUpDown(each) == static_cast<int>(notice.idFrom);
    });
    if (notice.code != static_cast<UINT>(UDN_DELTAPOS) || part == std::end(kParts)) {
        return std::nullopt;
    }
    mFields.Step(*part, reinterpret_cast<const NMUPDOWN&>(notice).iDelta > 0);
    for (const TimePart each : kParts) {
        Show(each);
    }
    mForm.FocusOn(mForm.Control(ids::TimeText(*part)));
    Select(*part, 0, mFields.Text(*part).size());
    return TRUE;  // the position is set already
}

void TimeFieldControls::LeaveAll() {
    for (const TimePart part : kParts) {
        mFields.Leave(part);
        Show(part);
    }
}

std::optional<LRESULT> TimeFieldControls::OnFieldMessage(TimePart part, UINT message, WPARAM wParam) {
    switch (message) {
        case WM_CHAR: {
            const FieldText typed = mFields.Type(part, Read(part), static_cast<wchar_t>(wParam));
            Show(part);
            Select(part, typed.start, typed.end);
            return 0;
        }
        case WM_KEYDOWN:
            if (MoveCaretOut(part, wParam) || (wParam == VK_DELETE && part == TimePart::AmPm)) {
                return 0;
            }
            return std::nullopt;
        // No text gets in but by keys; the AM/PM text is not edited at all.
        case WM_PASTE:
        case WM_UNDO:
        case EM_UNDO:
            return 0;
        case WM_CUT:
        case WM_CLEAR:
            return part == TimePart::AmPm ? std::optional<LRESULT>(0) : std::nullopt;
        default:
            return std::nullopt;
    }
}

// The right arrow at the end of a field goes on to the next one, the left arrow at its start to the one before.
bool TimeFieldControls::MoveCaretOut(TimePart part, WPARAM key) {
    const FieldText field = Read(part);
    const bool forward = key == VK_RIGHT && field.end == field.text.size();
    const bool back = key == VK_LEFT && field.start == 0;
    if (!forward && !back) {
        return false;
    }
    const int step = forward ? 1 : -1;
    for (int next = static_cast<int>(part) + step; next >= 0 && next < static_cast<int>(std::size(kParts));
         next += step) {
        const TimePart neighbour = kParts[next];
        if (IsShown(neighbour)) {
            mForm.FocusOn(mForm.Control(ids::TimeText(neighbour)));
            Select(neighbour, 0, mFields.Text(neighbour).size());
            return true;
        }
    }
    return false;
}

FieldText TimeFieldControls::Read(TimePart part) const {
    DWORD start = 0;
    DWORD end = 0;
    SendMessageW(mForm.Control(ids::TimeText(part)), EM_GETSEL, reinterpret_cast<WPARAM>(&start),
                 reinterpret_cast<LPARAM>(&end));
    return {mForm.TextOf(ids::TimeText(part)), start, end};
}

void TimeFieldControls::Show(TimePart part) {
    mShowing = true;
    if (mForm.TextOf(ids::TimeText(part)) != mFields.Text(part)) {
        mForm.SetTextOf(ids::TimeText(part), mFields.Text(part));
    }
    const NumberRange range = mFields.Range(part);
    const HWND upDown = mForm.Control(ids::TimeUpDown(part));
    SendMessageW(upDown, UDM_SETRANGE32, static_cast<WPARAM>(range.lowest), range.highest);
    SendMessageW(upDown, UDM_SETPOS32, 0, mFields.Position(part));
    mShowing = false;
}

void TimeFieldControls::Select(TimePart part, size_t start, size_t end) const {
    SendMessageW(mForm.Control(ids::TimeText(part)), EM_SETSEL, start, static_cast<LPARAM>(end));
}

}  // namespace v5
