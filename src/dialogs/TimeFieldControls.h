// The hour, minute and AM/PM fields of a form: three labelled text boxes with up-down controls.
#pragma once

#include <windows.h>

#include <optional>

#include "dialogs/ModalForm.h"
#include "dialogs/TimeFields.h"

namespace v5 {

class TimeFieldControls {
  public:
    // The place that the fields need, in dialog units, all three of them shown.
    static constexpr int kWidth = 140;
    static constexpr int kHeight = units::kLabelHeight + 2 + units::kFieldHeight;

    // Shows `fields` on `form`; both live longer than this object.
    TimeFieldControls(ModalForm& form, TimeFields& fields) : mForm(form), mFields(fields) {}

    // Which of the fields are shown; by default all.
    void SetVisible(bool time, bool minutes);

    // Creates the controls, next in the form's tab order.
    void Create();

    // Places the controls, without gaps for the hidden ones, from a corner in dialog units on.
    void LayOut(int left, int top);

    // Shows what the fields hold, and the AM/PM field on the 12-hour clock only. To be called when the fields were
    // changed from outside.
    void Refresh();

    // Greys the controls or makes them work again.
    void Enable(bool enabled);

    // The form passes its commands and notifications on. True or an answer when they were for these controls.
    bool OnCommand(int id, int notification);
    std::optional<LRESULT> OnNotify(const NMHDR& notice);

    // The user has finished: what is half typed is put right.
    void LeaveAll();

  private:
    bool IsShown(TimePart part) const;
    std::optional<LRESULT> OnFieldMessage(TimePart part, UINT message, WPARAM wParam);
    bool MoveCaretOut(TimePart part, WPARAM key);
    FieldText Read(TimePart part) const;
    void Show(TimePart part);
    void Select(TimePart part, size_t start, size_t end) const;

    ModalForm& mForm;
    TimeFields& mFields;
    bool mShowsTime = true;
    bool mShowsMinutes = true;
    bool mShowing = false;  // the controls change by our own hand, not the user's
};

}  // namespace v5
