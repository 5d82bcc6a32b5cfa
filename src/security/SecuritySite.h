// The site that a security object works for: its database, its stored documents, its messages and its audit trail.
#pragma once

#include <exception>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>

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
    bool Guard(Work&& work) noexcept {
        try {
            work();
            return true;
        } catch (...) {
            ReportCurrentException();
            return false;
        }
    }

    // Connects to the site's databases; throws SecurityProblem. A database object that could be created stays, even
    // when a later step failed, until the next Connect or Disconnect.
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

    // The same as the start of a change: gives a new document when none is stored, and throws SecurityProblem when the
    // stored one does not parse.
    StoredDocument ReadForChange(const DocumentFormat& format, std::wstring_view problem);

    // Stores a changed document and writes the records of the change, all or nothing: throws SecurityProblem with
    // `saveProblem` when the document cannot be stored, and when a record cannot be written puts the old value back
    // and throws SecurityProblem too.
    void Save(const StoredDocument& document, std::wstring_view saveProblem,
              std::initializer_list<EventRecord> records);

  private:
    void ReportCurrentException() noexcept;
    StoredDocument Load(const DocumentFormat& format);
    std::unique_ptr<XmlDocument> Parse(std::wstring_view text);
    std::unique_ptr<XmlDocument> Decode(std::wstring_view stored);

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
