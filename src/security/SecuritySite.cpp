#include "security/SecuritySite.h"

#include "base/Text.h"
#include "base/Utf8.h"
#include "security/UtilityBase64Functions.h"

namespace v5 {

std::wstring NewDocumentText(const DocumentFormat& format, const CivilDateTime& now) {
    std::wstring text(format.newTextBeforeTime);
    text += FormatTimestamp24(now);
    text += format.newTextAfterTime;
    return text;
}

void SecuritySite::Connect(const SiteConnection& connection, std::wstring_view applicationName) {
    constexpr std::wstring_view kNoDatabase = L"Can't setup DBIL [STR-0095]";
    mDatabase.reset();
    try {
        mDatabase = mHost.NewDatabase(mMessages);
    } catch (const AutomationError&) {
        throw SecurityProblem(kNoDatabase);
    }
    const auto database = mDatabase;
    if (!database->SetApplicationName(applicationName)) {
        throw SecurityProblem(kNoDatabase);
    }
    mSiteID = connection.siteID;
    if (!database->Initialise(connection)) {
        throw SecurityProblem(L"Can't setup DBIL [STR-0096]");
    }
    if (!database->OpenSite(mSiteID)) {
        throw SecurityProblem(L"Can't setup DBIL [STR-0097]");
    }
}

void SecuritySite::Disconnect() {
    if (const auto database = std::move(mDatabase)) {  // released also when closing fails
        database->Close();
    }
}

std::shared_ptr<SiteDatabase> SecuritySite::Database() const {
    if (!mDatabase) {
        throw AutomationError::RunTime(91, L"Object variable or With block variable not set");
    }
    return mDatabase;
}

std::wstring SecuritySite::Timestamp() const {
    return FormatTimestamp24(mHost.LocalClock().LocalNow());
}

StoredDocument SecuritySite::Load(const DocumentFormat& format) {
    StoredDocument document;
    document.format = &format;
    document.stored = Database()->ReadLookup(mSiteID, format.key);
    document.isStored = !Trim(document.stored).empty();
    if (document.isStored) {
        document.xml = Decode(document.stored);
    }
    return document;
}

StoredDocument SecuritySite::Read(const DocumentFormat& format, std::wstring_view problem) {
    StoredDocument document = Load(format);
    if (document.isStored && !document.xml) {
        RaiseProblem(problem);
    }
    return document;
}

StoredDocument SecuritySite::ReadForChange(const DocumentFormat& format, std::wstring_view problem) {
    StoredDocument document = Load(format);
    if (!document.isStored) {
        document.xml = Parse(NewDocumentText(format, mHost.LocalClock().LocalNow()));
    }
    if (!document.xml) {
        throw SecurityProblem(problem);
    }
    return document;
}

void SecuritySite::Save(const StoredDocument& document, std::wstring_view saveProblem,
                        std::initializer_list<EventRecord> records) {
    const auto database = Database();
    const std::wstring_view key = document.format->key;
    const std::wstring text = document.xml->Serialise();
    // A value with characters that XML cannot hold would make a document that nobody can read again.
    if (!Parse(text) || !database->WriteLookup(mSiteID, key, EncodeBase64(ToUtf8(text)))) {
        throw SecurityProblem(saveProblem);
    }
    try {
        for (const EventRecord& record : records) {
            if (!database->WriteEvent(mSiteID, mHost.LocalClock().LocalNow(), record)) {
                throw SecurityProblem(L"Can't write audit record [" + std::wstring(record.tag) + L"]");
            }
        }
    } catch (...) {
        database->WriteLookup(mSiteID, key, document.stored);  // no change without its audit record
        throw;
    }
}

std::unique_ptr<XmlDocument> SecuritySite::Parse(std::wstring_view text) {
    return IsSafeToParse(text) ? mHost.ParseXml(text) : nullptr;
}

std::unique_ptr<XmlDocument> SecuritySite::Decode(std::wstring_view stored) {
    try {
        return Parse(FromUtf8(DecodeBase64(stored)));
    } catch (const Base64Error&) {
        return nullptr;
    }
}

void SecuritySite::ReportCurrentException() noexcept {
    try {
        try {
            throw;  // cppcheck-suppress rethrowNoCurrentException ; it is called where one is being handled
        } catch (const SecurityProblem& problem) {
            mMessages.RaiseMessage(problem.Type(), problem.Message());
        } catch (const AutomationError&) {
            RaiseProblem(CurrentFailureText());
        }
    } catch (...) {  // also when there is no memory for the text
        RaiseProblem(L"Unexpected failure in the security library");
    }
}

std::unique_ptr<XmlElement> SelectOrAppend(XmlDocument& xml, std::wstring_view xpath, std::wstring_view name) {
    auto element = SelectFirst(xml, xpath);
    return element ? std::move(element) : xml.Append(name);
}

void AppendHistory(XmlDocument& xml, std::initializer_list<HistoryAttribute> attributes) {
    const auto history = xml.Append(L"History");
    for (const HistoryAttribute& attribute : attributes) {
        history->SetAttribute(attribute.name, attribute.value);
    }
}

}  // namespace v5
