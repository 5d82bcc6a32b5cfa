// Events as any class raises them: who may listen, who is told, and listeners that misbehave. NimboSecurity passes on
// what it is told as a message sink, so a test can raise its event at will.
#include <windows.h>

#include <ocidl.h>
#include <olectl.h>

#include "V5Strings.h"
#include "component/Client.h"
#include "component/Sink.h"

namespace v5::test {

namespace {

class EventsTest : public testing::Test {
  protected:
    void SetUp() override {
        const ComPtr<IDispatch> object = CreateByName(L"V5Strings.NimboSecurity");
        ASSERT_TRUE(object);
        ASSERT_EQ(object.As(&mRaiser), S_OK);
        ASSERT_EQ(object.As(&mContainer), S_OK);
        ASSERT_EQ(mContainer->FindConnectionPoint(DIID___NimboSecurity, &mPoint), S_OK);
    }
    void Raise() { EXPECT_EQ(mRaiser->RaiseMsg(4, _bstr_t(L"text")), S_OK); }

    ComPtr<IRaiseMsg> mRaiser;
    ComPtr<IConnectionPointContainer> mContainer;
    ComPtr<IConnectionPoint> mPoint;
};

TEST_F(EventsTest, ReachThoseWhoListenNow) {
    Listener first, second;
    DWORD firstCookie = 0, secondCookie = 0;
    ASSERT_EQ(mPoint->Advise(&first, &firstCookie), S_OK);
    ASSERT_EQ(mPoint->Advise(&second, &secondCookie), S_OK);
    EXPECT_NE(firstCookie, secondCookie);
    Raise();
    EXPECT_EQ(mPoint->Unadvise(firstCookie), S_OK);
    EXPECT_EQ(first.references, 1U) << "a listener that has left is still held";
    Raise();
    EXPECT_EQ(first.events, 1);
    EXPECT_EQ(second.events, 2);
    EXPECT_EQ(mPoint->Unadvise(firstCookie), CONNECT_E_NOCONNECTION);
    EXPECT_EQ(mPoint->Unadvise(secondCookie), S_OK);
    Raise();
    EXPECT_EQ(second.events, 2);
}

TEST_F(EventsTest, AListenerCannotHarmTheOthersOrTheCaller) {
    Listener failing, leaving, last;
    DWORD failingCookie = 0, leavingCookie = 0, lastCookie = 0;
    failing.onEvent = [] { return E_FAIL; };
    leaving.onEvent = [&] { return mPoint->Unadvise(leavingCookie); };
    last.onEvent = [&] {  // the listener holds the object no longer than the event lasts
        mRaiser.Reset();
        return S_OK;
    };
    ASSERT_EQ(mPoint->Advise(&failing, &failingCookie), S_OK);
    ASSERT_EQ(mPoint->Advise(&leaving, &leavingCookie), S_OK);
    Raise();
    Raise();
    EXPECT_EQ(failing.events, 2);
    EXPECT_EQ(leaving.events, 1);
    EXPECT_EQ(leaving.references, 1U);
    ASSERT_EQ(mPoint->Advise(&last, &lastCookie), S_OK);
    mContainer.Reset();
    mPoint.Reset();
    Raise();  // the last reference goes while the event is raised
    EXPECT_EQ(last.events, 1);
    EXPECT_EQ(failing.references, 1U) << "the object that ended still holds its listeners";
    EXPECT_EQ(last.references, 1U);
}

TEST_F(EventsTest, RefuseWhatCannotListen) {
    Listener listener;
    DWORD cookie = 1;
    EXPECT_EQ(mPoint->Advise(nullptr, &cookie), E_POINTER);
    EXPECT_EQ(mPoint->Advise(&listener, nullptr), E_POINTER);
    const ComPtr<IUnknown> notDispatch(mPoint.Get());
    EXPECT_EQ(mPoint->Advise(notDispatch.Get(), &cookie), CONNECT_E_CANNOTCONNECT);
    EXPECT_EQ(cookie, 0U);
    ComPtr<IConnectionPoint> other;
    EXPECT_EQ(mContainer->FindConnectionPoint(IID_IDispatch, &other), CONNECT_E_NOCONNECTION);
    EXPECT_EQ(mContainer->FindConnectionPoint(DIID___NimboSecurity, nullptr), E_POINTER);
}

TEST_F(EventsTest, CanBeListed) {
    Listener listener;
    DWORD cookie = 0;
    ASSERT_EQ(mPoint->Advise(&listener, &cookie), S_OK);
    ComPtr<IEnumConnectionPoints> points;
    ASSERT_EQ(mContainer->EnumConnectionPoints(&points), S_OK);
    IConnectionPoint* found[2] = {};
    ULONG count = 0;
    EXPECT_EQ(points->Next(2, found, &count), S_FALSE);
    ASSERT_EQ(count, 1U);
    EXPECT_EQ(found[0], mPoint.Get());
    IID iid = IID_NULL;
    EXPECT_EQ(found[0]->GetConnectionInterface(&iid), S_OK);
    EXPECT_EQ(iid, DIID___NimboSecurity);
    found[0]->Release();

    ComPtr<IEnumConnections> connections;
    ASSERT_EQ(mPoint->EnumConnections(&connections), S_OK);
    CONNECTDATA connection{};
    ASSERT_EQ(connections->Next(1, &connection, &count), S_OK);
    EXPECT_EQ(connection.dwCookie, cookie);
    EXPECT_EQ(connection.pUnk, &listener);
    connection.pUnk->Release();
    connections.Reset();
    EXPECT_EQ(mPoint->Unadvise(cookie), S_OK);
    EXPECT_EQ(listener.references, 1U);

    // Script engines find the events' interface through the class information.
    ComPtr<IProvideClassInfo2> provider;
    ASSERT_EQ(mRaiser.As(&provider), S_OK);
    EXPECT_EQ(provider->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, &iid), S_OK);
    EXPECT_EQ(iid, DIID___NimboSecurity);
}

}  // namespace

}  // namespace v5::test
