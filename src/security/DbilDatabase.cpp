#include "security/DbilDatabase.h"

#include <windows.h>

#include <ocidl.h>

#include "V5DBIL.h"
#include "com/Adopt.h"
#include "com/Guard.h"
#include "com/SimpleObject.h"
#include "com/Values.h"

namespace v5 {

namespace {

constexpr long kAll = -1;  // selectors of OpenSite

VARIANT_BOOL Flag(bool value) {
    return value ? VARIANT_TRUE : VARIANT_FALSE;
}

// Receives the component's events. It may outlive the database object for as long as the component holds it.
class DbilEvents final : public SimpleObject<IDispatch> {
  public:
    explicit DbilEvents(MessageSink& messages) : mMessages(&messages) {}

    void Disconnect() { mMessages = nullptr; }

    STDMETHODIMP GetTypeInfoCount(UINT* count) override {
        *count = 0;
        return S_OK;
    }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo** info) override {
        *info = nullptr;
        return DISP_E_BADINDEX;
    }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return DISP_E_UNKNOWNNAME; }
    STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* arguments, VARIANT*, EXCEPINFO*, UINT*) override {
        constexpr DISPID kMessage = 1;
        if (id != kMessage) {
            return DISP_E_MEMBERNOTFOUND;
        }
        if (arguments->cArgs != 2) {
            return DISP_E_BADPARAMCOUNT;
        }
        return GuardedQuietly([&] {
            const _variant_t type(arguments->rgvarg[1]);  // the last argument comes first
            _variant_t text(arguments->rgvarg[0]);
            text.ChangeType(VT_BSTR);
            if (mMessages != nullptr) {
                mMessages->RaiseMessage(static_cast<long>(type), View(V_BSTR(&text)));
            }
        });
    }

  private:
    bool AnswersTo(REFIID iid) const override { return iid == DIID__DatabaseInterfaceEvents; }

    MessageSink* mMessages;
};

class DbilDatabase : public SiteDatabase {
  public:
    explicit DbilDatabase(MessageSink& messages) {
        Check(CoCreateInstance(CLSID_DatabaseInterface, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&mDatabase)));
        ComPtr<IConnectionPointContainer> container;
        Check(mDatabase.As(&container));
        Check(container->FindConnectionPoint(DIID__DatabaseInterfaceEvents, &mEvents));
        mListener = Adopt(new DbilEvents(messages));
        Check(mEvents->Advise(mListener.Get(), &mCookie));
    }
    ~DbilDatabase() override {
        mListener->Disconnect();
        mEvents->Unadvise(mCookie);
    }
    DbilDatabase(const DbilDatabase&) = delete;
    DbilDatabase& operator=(const DbilDatabase&) = delete;

    bool SetApplicationName(std::wstring_view name) override {
        return Succeeded([&](VARIANT_BOOL* done) { return mDatabase->SetApplicationName(ToBstr(name), done); });
    }
    bool Initialise(const SiteConnection& connection) override {
        const _bstr_t none(L"");
        return Succeeded([&](VARIANT_BOOL* done) {
            return mDatabase->Initialise(ToBstr(connection.siteID), ToBstr(connection.languageID),
                                         ToBstr(connection.configDatabase), ToBstr(connection.alarmsDatabase), none,
                                         none, none, Flag(connection.isNoninteractive), 0, done);
        });
    }
    bool OpenSite(std::wstring_view siteID) override {
        return Succeeded(
            [&](VARIANT_BOOL* done) { return mDatabase->OpenSite(ToBstr(siteID), kAll, kAll, kAll, 0, 0, 0, done); });
    }
    void Close() override { Check(mDatabase->Close()); }
    void ForgetLogons(std::wstring_view siteID) override { Check(mDatabase->ForgetLogons(ToBstr(siteID))); }

    std::wstring ReadLookup(std::wstring_view siteID, std::wstring_view key) override {
        BSTR value = nullptr;
        Check(mDatabase->ReadLookup(ToBstr(siteID), kOwnRows, _bstr_t(kLookupTable), ToBstr(key), &value));
        return TakeText(value);
    }
    bool WriteLookup(std::wstring_view siteID, std::wstring_view key, std::wstring_view value) override {
        return Succeeded([&](VARIANT_BOOL* done) {
            return mDatabase->WriteLookup(ToBstr(siteID), kOwnRows, _bstr_t(kLookupTable), ToBstr(key), ToBstr(value),
                                          done);
        });
    }
    bool WriteEvent(std::wstring_view siteID, const CivilDateTime& time, const EventRecord& record) override {
        return Succeeded([&](VARIANT_BOOL* done) {
            return mDatabase->WriteEventLog(ToBstr(siteID), ToAutomationDate(time), ToBstr(record.text),
                                            ToBstr(record.category), record.kind, _bstr_t(L""), ToBstr(record.tag),
                                            done);
        });
    }

    std::wstring CurrentUserName(std::wstring_view siteID) override {
        BSTR name = nullptr;
        Check(SiteInfo(siteID)->get_CurrentUserName(&name));
        return TakeText(name);
    }
    std::wstring ConnectionString(std::wstring_view siteID) override {
        BSTR text = nullptr;
        Check(SiteInfo(siteID)->get_ConnectionString(&text));
        return TakeText(text);
    }
    bool UsesWindowsAuthentication(std::wstring_view connectionString) override {
        VARIANT_BOOL windows = VARIANT_FALSE;
        Check(mDatabase->UsesWindowsAuthentication(ToBstr(connectionString), &windows));
        return ToBool(windows);
    }
    bool AllowsSqlLogins(std::wstring_view siteID) override {
        VARIANT_BOOL allowed = VARIANT_FALSE;
        Check(SiteInfo(siteID)->get_AllowsSqlLogins(&allowed));
        return ToBool(allowed);
    }

  private:
    // An operation that answers whether it succeeded: an error is as good as False.
    template <class Operation>
    static bool Succeeded(Operation&& operation) {
        VARIANT_BOOL done = VARIANT_FALSE;
        return SUCCEEDED(operation(&done)) && ToBool(done);
    }

    ComPtr<ISiteInfo> SiteInfo(std::wstring_view siteID) {
        ComPtr<ISiteInfo> info;
        Check(mDatabase->get_SiteInfo(ToBstr(siteID), &info));
        Require(info);
        return info;
    }

    ComPtr<IDatabaseInterface> mDatabase;
    ComPtr<IConnectionPoint> mEvents;
    ComPtr<DbilEvents> mListener;
    DWORD mCookie = 0;
};

}  // namespace

std::unique_ptr<SiteDatabase> NewDbilDatabase(MessageSink& messages) {
    return std::make_unique<DbilDatabase>(messages);
}

}  // namespace v5
