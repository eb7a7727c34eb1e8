#include "errors/HuntERR31_parts.h"
#include "errors/text.h"
#include "frame/convert.h"
#include "frame/platform.h"
#include "frame/regional.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace Zontara::HuntERR31 {

namespace {

constexpr char kMark = '\b';

constexpr std::string_view kHeader =
    "%Descr% %nl%"
    "  Time='%Time%' App='%App%:%Ver%' ADO-version='%ADOVersion%' Computer='%Comp%' %nl%"
    "  Method: %MethodName% %nl%"
    "  Number: %ErrNum% = &H%ErrHex% = vbObjectError %ErrNumRel1% = ERRMAP_APP_FIRST %ErrNumRel2% %ErrStd%%nl%"
    "  Source: %Source% %nl%"
    "  Description: %Descr%%nl%";

constexpr std::string_view kWeb =
    "%nl%  Web Info: %nl%"
    "    RequestMethod='%RequestMethod%'%nl%"
    "    QueryString: '%WebServer%%URL%%QS%' %nl%"
    "    FormData:    '%FormData%' %nl%"
    "    Cookies:     '%Cookies%'  %nl%";

/// No error at all, and "environment option not found", which many a call leaves behind that went well.
constexpr std::array<std::int32_t, 2> kSilentCodes = {0, 203};

/// A template whose percent signs are marks, so that those of the values stay what they are.
std::string Marked(std::string_view fields) {
    std::string text(fields);
    std::replace(text.begin(), text.end(), '%', kMark);
    return text;
}

void TurnMarksBack() {
    std::string& report = Fields().mErrReport;
    std::replace(report.begin(), report.end(), kMark, '%');
}

std::string HexText(std::int32_t number) {
    std::array<char, 8> digits;
    const auto end =
        std::to_chars(digits.data(), digits.data() + digits.size(), static_cast<std::uint32_t>(number), 16);
    std::string text(digits.data(), end.ptr);
    std::transform(text.begin(), text.end(), text.begin(),
                   [](char digit) { return digit >= 'a' ? static_cast<char>(digit - 'a' + 'A') : digit; });
    return text;
}

/// `number - base`, with error 6 when that leaves 32 bits.
std::string DistanceText(std::int32_t number, std::int32_t base) {
    return ErrSignedText(NarrowToInt32(static_cast<std::int64_t>(number) - base));
}

std::string TypeNameOf(const Ref<Object>& object) { return object ? object->TypeName() : "Nothing"; }

Ref<Object> ObjectMember(const Ref<Object>& object, std::string_view member) {
    Ref<Object> read = ConvertTo<Ref<Object>>(object->ReadMember(member));
    if (!read) Raise(RunTimeError::ObjectNotSet);
    return read;
}

std::string TextMember(const Ref<Object>& object, std::string_view member) {
    return ToText(object->ReadMember(member));
}

void AddErrors(const Ref<Object>& connection) {
    const Ref<Object> errors = ObjectMember(connection, "Errors");
    const std::int32_t count = ConvertTo<std::int32_t>(errors->ReadMember("Count"));
    for (std::int32_t i = 0; i < count; ++i) {
        ErrAddLine("    Error:         " + TextMember(ObjectMember(errors, std::to_string(i)), "Description"));
    }
}

}  // namespace

void ErrBuildHeader(std::string_view method) {
    UnderTrap("ErrBuildHeader", [&] {
        ModuleFields& fields = Fields();
        fields.mErrReport = Marked(kHeader);
        ErrSetField("nl", kLineBreak);
        ErrSetField("MethodName", method);
        ErrSetField("Comp", ErrComputerName());
        ErrSetField("Time", Format(CurrentPlatform().Now(), "Mm/Dd/yy Hh:Nn:Ss"));
        ErrSetField("App", CurrentPlatform().ApplicationName());
        ErrSetField("Ver", ErrVersionText());
        ErrSetField("ADOVersion", ErrAdoVersion());
        ErrSetField("ErrNum", std::to_string(fields.mErrNumber));
        ErrSetField("ErrHex", HexText(fields.mErrNumber));
        ErrSetField("ErrNumRel1", DistanceText(fields.mErrNumber, vbObjectError));
        ErrSetField("ErrNumRel2", DistanceText(fields.mErrNumber, ERRMAP_APP_FIRST));
        ErrSetField("ErrStd", fields.mErrNumber == ERR_GENERAL ? "= ERR_GENERAL" : "");
        ErrSetField("Source", fields.mErrSource);
        ErrSetField("Descr", fields.mErrDescription);
        TurnMarksBack();
    });
}

void ErrApiInfo() {
    UnderTrap("ErrApiInfo", [] {
        const std::int32_t code = Fields().mErrSystemCode;
        if (std::find(kSilentCodes.begin(), kSilentCodes.end(), code) != kSilentCodes.end()) return;
        const std::string text = std::to_string(code);
        ErrAddLine("  API Error: (" + text + ") " + ErrApiMessage(text));
    });
}

std::string ErrApiMessage(std::string_view code) {
    const std::string message = CurrentPlatform().SystemErrorText(ConvertTo<std::int32_t>(Value(code)));
    std::string text = ReplaceAll(message, kLineBreak, "");
    text.erase(std::remove(text.begin(), text.end(), '\0'), text.end());
    return text;
}

void ErrAdoInfo(const Ref<Object>& connection, const Ref<Object>& dbObject) {
    UnderTrap("ErrAdoInfo", [&] {
        if (!connection) return;
        ErrAddLine("  ADO Info: ");
        ErrAddLine("    ADO Version:   " + ErrAdoVersion());
        ErrAddLine("    DbObject:      " + TypeNameOf(dbObject) +
                   (Fields().mErrConnection ? " (Connection object was preserved internally)" : ""));
        ErrAddLine("    Conn. String: '" + TextMember(connection, "ConnectionString") + "'");
        ErrAddLine("    Conn. State:   " + ErrStateText(ConvertTo<std::int32_t>(connection->ReadMember("State"))));
        AddErrors(connection);
    });
}

std::string ErrAdoVersion() {
    std::string version = "?";
    UnderTrap("ErrAdoVersion", [&] { version = CurrentPlatform().DataAccessVersion(); });
    return version;
}

void ErrWebInfo() {
    UnderTrap("ErrWebInfo", [] {
        const Ref<Object> context = ErrObjectContext();
        if (!context) return;
        const Ref<Object> request = ConvertTo<Ref<Object>>(context->ReadMember("Request"));
        if (!request) return;
        ErrAddLine(Marked(kWeb));
        const Ref<Object> server = ObjectMember(request, "ServerVariables");
        ErrSetField("WebServer", TextMember(server, "SERVER_NAME"));
        ErrSetField("RequestMethod", TextMember(server, "REQUEST_METHOD"));
        ErrSetField("URL", TextMember(server, "URL"));
        const std::string query = TextMember(request, "queryString");
        ErrSetField("QS", query.empty() ? query : "?" + query);
        ErrSetField("FormData", TextMember(request, "Form"));
        ErrSetField("Cookies", TextMember(request, "Cookies"));
        ErrSetField("nl", kLineBreak);
        TurnMarksBack();
    });
}

void ErrSetField(std::string_view name, std::string_view value) {
    const std::string mark = ErrFieldMark();
    std::string& report = Fields().mErrReport;
    report = ReplaceAll(report, mark + std::string(name) + mark, value);
}

std::string ErrFieldMark() { return std::string(1, kMark); }

std::string ErrStateText(std::int32_t state) {
    if (state == 0) return "adStateClosed";
    std::string text;
    if (ErrFlagSet(state, 1)) text += "adStateOpen";
    if (ErrFlagSet(state, 2)) text += " + adStateConnecting";
    if (ErrFlagSet(state, 4)) text += " + adStateExecuting";
    if (ErrFlagSet(state, 8)) text += " + adStateFetching";
    return text;
}

std::string ErrSignedText(std::int32_t number) {
    const std::int64_t wide = number;
    return wide >= 0 ? "+ " + std::to_string(wide) : "- " + std::to_string(-wide);
}

std::string ErrVersionText() {
    const Platform& platform = CurrentPlatform();
    return std::to_string(platform.VersionMajor()) + "." + std::to_string(platform.VersionMinor()) + "." +
           std::to_string(platform.VersionRevision());
}

std::string ErrComputerName() { return CurrentPlatform().ComputerName(); }

}  // namespace Zontara::HuntERR31
