// The site that a security object works for: its database, its stored documents, its messages and its audit trail.
#pragma once

#include <exception>
#include <functional>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "security/SecurityHost.h"

namespace v5 {

// One kind of security document: the key of its row, and the text of a new one around the time of its creation.
// Blanks and their absence are part of the format.
struct DocumentFormat {
    std::wstring_view key;
    std::wstring_view newTextBeforeTime;
    std::wstring_view newTextAfterTime;
};

inline constexpr DocumentFormat kSwitchDocument = {L"{A71A2E97-80BE-E011-A198-0023AE02B5BD}", L"<root><!--Created ",
                                                   L"--><Enabled>0</Enabled></root>"};
inline constexpr DocumentFormat kAccountsDocument = {L"{A7C1187A-ADA1-4D4A-ABCA-2804F5D8641F}", L"<root> <!--Created ",
                                                     L"--> </root>"};
inline constexpr DocumentFormat kAlarmResetDocument = {
    L"{A73D8FC4-8038-4EC3-B926-28CEBC80C237}", L"<root> <!--Created  ",
    L"--><ManualAlarmResetPwd>..garbage..</ManualAlarmResetPwd></root>"};
inline constexpr DocumentFormat kMinimumsDocument = {L"{A7EDAA89-A79C-4068-8B26-7B20523B4236}", L"<root> <!--Created  ",
                                                     L"--></root>"};

std::wstring NewDocumentText(const DocumentFormat& format, const CivilDateTime& now);

// Ends an operation with a message for the client.
class SecurityProblem : public std::exception {
  public:
    explicit SecurityProblem(std::wstring_view message, long type = kMessageTypeProblem)
        : mType(type), mMessage(message) {}
    const char* what() const noexcept override { return "a security operation ended with a message"; }
    long Type() const { return mType; }
    const std::wstring& Message() const { return mMessage; }

  private:
    long mType;
    std::wstring mMessage;
};

// A document as read from the database.
struct StoredDocument {
    const DocumentFormat* format = nullptr;
    std::wstring stored;  // the row's value
    bool isStored = false;
    std::unique_ptr<XmlDocument> xml;  // null when there is no document, or none that parses
};

struct HistoryAttribute {
    std::wstring_view name;
    std::wstring value;
};

class SecuritySite {
  public:
    // Both must outlive the object.
    SecuritySite(SecurityHost& host, MessageSink& messages) : mHost(host), mMessages(messages) {}

    // Runs `work` and reports whatever it throws as a message: a SecurityProblem as it says, another failure with type
    // 4, its number and its description. Answers whether the work came to its end. Nothing leaves this function.
    template <typename Work>
    bool ReportFailures(Work&& work) noexcept {
        try {
            work();
            return true;
        } catch (...) {
            ReportFailure();
            return false;
        }
    }

    // Connects to the site's databases; throws SecurityProblem. A database object that could be created stays, even
    // when a later step failed, until the next Connect or Disconnect: also when a client, handling a message, connects
    // or disconnects before this is through, and then this one has failed.
    void Connect(const SiteConnection& connection, std::wstring_view applicationName);
    void Disconnect();

    bool HasDatabase() const { return mDatabase != nullptr; }

    // Throws AutomationError with the run-time's "no object" error before Connect. Keep the pointer for as long as the
    // object is used: a client may disconnect while it handles one of the database's messages.
    std::shared_ptr<SiteDatabase> Database() const;

    const std::wstring& SiteID() const { return mSiteID; }
    SecurityHost& Host() { return mHost; }
    std::wstring Timestamp() const;

    void RaiseProblem(std::wstring_view text) { mMessages.RaiseMessage(kMessageTypeProblem, text); }

    // Reads a document. When its text is no Base64 or does not parse, raises `problem` and gives no document.
    StoredDocument Read(const DocumentFormat& format, std::wstring_view problem);

    // A change of one document: reads it, or starts a new one when none is stored, has `edit` change it and stores it
    // with the audit records that `edit` gives; stores nothing when it gives none. The change stands exactly when its
    // first record does: when that cannot be written, the old value is put back, and when this fails too the client is
    // told so. A later record that is missing is reported, and the change stays.
    //
    // Throws SecurityProblem: `readProblem` when the stored document does not parse, `saveProblem` when a text cannot
    // be kept in a document or the document cannot be stored, and when the first record is missing.
    void Change(const DocumentFormat& format, std::wstring_view readProblem, std::wstring_view saveProblem,
                const std::function<std::vector<EventRecord>(XmlDocument&)>& edit);

  private:
    void ReportFailure() noexcept;  // of the exception that is being handled
    StoredDocument Load(const DocumentFormat& format);
    std::unique_ptr<XmlDocument> Parse(std::wstring_view text);
    std::unique_ptr<XmlDocument> Decode(std::wstring_view stored);
    void Save(const StoredDocument& document, std::wstring_view problem, const std::vector<EventRecord>& records);
    void WriteRecord(SiteDatabase& database, const EventRecord& record);

    SecurityHost& mHost;
    MessageSink& mMessages;
    std::wstring mSiteID;
    std::shared_ptr<SiteDatabase> mDatabase;
};

// The first element that `xpath` selects; when there is none, a new last element `name` under the root.
std::unique_ptr<XmlElement> SelectOrAppend(XmlDocument& xml, std::wstring_view xpath, std::wstring_view name);

// Appends <History> with these attributes, in this order, under the root.
void AppendHistory(XmlDocument& xml, std::initializer_list<HistoryAttribute> attributes);

inline constexpr std::wstring_view kAuditCategory = L"SECURITY";

}  // namespace v5
