#include "security/SecuritySite.h"

#include "base/Text.h"
#include "security/TextConversionFunctions.h"
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
    std::shared_ptr<SiteDatabase> database;
    try {
        database = mHost.NewDatabase(mMessages);
    } catch (...) {
        throw SecurityProblem(kNoDatabase);
    }
    mDatabase = database;
    const auto require = [&](bool done, std::wstring_view problem) {
        if (!done) {
            throw SecurityProblem(problem);
        }
        if (mDatabase != database) {
            throw SecurityProblem(L"Setup was interrupted by another Setup or by Teardown");
        }
    };
    require(database->SetApplicationName(applicationName), kNoDatabase);
    mSiteID = connection.siteID;
    require(database->Initialise(connection), L"Can't setup DBIL [STR-0096]");
    require(database->OpenSite(connection.siteID), L"Can't setup DBIL [STR-0097]");
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

void SecuritySite::Change(const DocumentFormat& format, std::wstring_view readProblem, std::wstring_view saveProblem,
                          const std::function<std::vector<EventRecord>(XmlDocument&)>& edit) {
    StoredDocument document = Load(format);
    if (!document.isStored) {
        document.xml = Parse(NewDocumentText(format, mHost.LocalClock().LocalNow()));
    }
    if (!document.xml) {
        throw SecurityProblem(readProblem);
    }
    try {
        if (const std::vector<EventRecord> records = edit(*document.xml); !records.empty()) {
            Save(document, saveProblem, records);
        }
    } catch (const NoXmlText&) {
        throw SecurityProblem(saveProblem);
    }
}

void SecuritySite::Save(const StoredDocument& document, std::wstring_view problem,
                        const std::vector<EventRecord>& records) {
    const auto database = Database();
    const std::wstring text = document.xml->Serialise();
    if (!Parse(text) || !database->WriteLookup(mSiteID, document.format->key, StoredForm(text))) {
        throw SecurityProblem(problem);
    }
    try {
        WriteRecord(*database, records.front());
    } catch (...) {
        // No change without its record.
        const bool isBack = [&]() noexcept {
            try {
                return database->WriteLookup(mSiteID, document.format->key, document.stored);
            } catch (...) {
                return false;
            }
        }();
        if (isBack) {
            throw;
        }
        ReportFailure();
        throw SecurityProblem(L"The change is stored without its audit record, and could not be taken back [" +
                              std::wstring(records.front().tag) + L"]");
    }
    for (size_t i = 1; i < records.size(); ++i) {
        ReportFailures([&] { WriteRecord(*database, records[i]); });
    }
}

void SecuritySite::WriteRecord(SiteDatabase& database, const EventRecord& record) {
    if (!database.WriteEvent(mSiteID, mHost.LocalClock().LocalNow(), record)) {
        throw SecurityProblem(L"Can't write audit record [" + std::wstring(record.tag) + L"]");
    }
}

std::unique_ptr<XmlDocument> SecuritySite::Parse(std::wstring_view text) {
    if (text.size() > kMaxDocumentCharacters) {
        RaiseProblem(L"A security document has " + std::to_wstring(text.size()) +
                     L" characters, more than the limit of " + std::to_wstring(kMaxDocumentCharacters));
    }
    return IsSafeToParse(text) ? mHost.ParseXml(text) : nullptr;
}

std::unique_ptr<XmlDocument> SecuritySite::Decode(std::wstring_view stored) {
    try {
        return Parse(TextOfStored(stored));
    } catch (const Base64Error&) {
        return nullptr;
    }
}

void SecuritySite::ReportFailure() noexcept {
    try {
        try {
            throw;  // cppcheck-suppress rethrowNoCurrentException ; it is called where one is being handled
        } catch (const SecurityProblem& problem) {
            mMessages.RaiseMessage(problem.Type(), problem.Message());
        } catch (...) {
            RaiseProblem(CurrentFailureText());
        }
    } catch (...) {  // no memory for the text
        RaiseProblem(L"7, Out of memory");
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
