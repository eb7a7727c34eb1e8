#include "errors/HuntERR31_parts.h"
#include "errors/current_error.h"
#include "errors/text.h"
#include "frame/platform.h"

namespace Zontara::HuntERR31 {

namespace {

constexpr std::string_view kNoStop = "NoStop";
/// Yes, No and Cancel, with the critical icon.
constexpr std::int32_t kBoxStyle = 19;

bool MayAsk() {
    return CurrentSwitches().ErrStepEnabled && !ErrIsUserError() && CurrentSwitches().ErrCanPrompt &&
           Fields().mErrHelpFile != kNoStop;
}

}  // namespace

bool ErrStepMode() {
    ErrPreserve();
    // A failure of an undoing call is none to stop at: the saved error is that of the failure being reported.
    if (Fields().inErrorIn || !MayAsk()) return false;
    const BoxAnswer answer = CurrentPlatform().MessageBox(ErrStepPrompt(), "Stopped on Error", kBoxStyle);
    if (answer == BoxAnswer::Yes) Fields().mErrPreserved = false;
    if (answer == BoxAnswer::Cancel) Fields().mErrHelpFile = kNoStop;
    ErrRestore();
    return answer == BoxAnswer::Yes;
}

std::string ErrFirstLine() {
    if (!ErrIsPropagated()) return Fields().mErrDescription;
    const std::string& report = Fields().mErrReport.empty() ? CurrentError().description : Fields().mErrReport;
    return report.substr(0, report.find(kLineBreak));
}

std::string ErrStepPrompt() {
    std::string prompt = "Error: " + ErrFirstLine();
    if (ErrIsPropagated()) prompt += " (Propagated)";
    prompt += kLineBreak;
    prompt += "Do you want to retry the operation in step mode?";
    prompt += kLineBreak;
    prompt += "Click YES to retry, NO to move to the caller, CANCEL for no more stops";
    return prompt;
}

}  // namespace Zontara::HuntERR31
