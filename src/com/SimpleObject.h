// The base of the library's small COM objects: one interface, a count of references, no automation.
#pragma once

#include <windows.h>

#include <unknwn.h>

#include <algorithm>
#include <atomic>
#include <utility>
#include <vector>

#include "com/Component.h"

namespace v5 {

// Objects are made with `new` and one reference, which Adopt takes over. The DLL stays loaded while one lives.
template <class Interface>
class SimpleObject : public Interface {
  public:
    SimpleObject(const SimpleObject&) = delete;
    SimpleObject& operator=(const SimpleObject&) = delete;

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
        if (object == nullptr) {
            return E_POINTER;
        }
        const bool known = iid == IID_IUnknown || iid == __uuidof(Interface) || AnswersTo(iid);
        *object = known ? static_cast<Interface*>(this) : nullptr;
        if (!known) {
            return E_NOINTERFACE;
        }
        AddRef();
        return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return ++mReferences; }
    STDMETHODIMP_(ULONG) Release() override {
        const ULONG left = --mReferences;
        if (left == 0) {
            delete this;
        }
        return left;
    }

  protected:
    SimpleObject() { AddComponentUse(); }
    virtual ~SimpleObject() { ReleaseComponentUse(); }

    // Whether the interface also goes by another identifier: that of an event interface, for a listener.
    virtual bool AnswersTo(REFIID) const { return false; }

  private:
    std::atomic<ULONG> mReferences = 1;
};

// The base of an enumerator over a list that does not change: all but the copying of items and Clone.
template <class Interface, class Item, class Stored>
class SimpleEnumerator : public SimpleObject<Interface> {
  public:
    STDMETHODIMP Next(ULONG wanted, Item* items, ULONG* fetched) override {
        if (items == nullptr || (fetched == nullptr && wanted != 1)) {
            return E_POINTER;
        }
        const auto given = static_cast<ULONG>(std::min<size_t>(wanted, mItems.size() - mNext));
        const HRESULT status = CopyOut(mItems.data() + mNext, given, items);
        if (FAILED(status)) {
            return status;
        }
        mNext += given;
        if (fetched != nullptr) {
            *fetched = given;
        }
        return given == wanted ? S_OK : S_FALSE;
    }
    STDMETHODIMP Skip(ULONG count) override {
        const size_t skipped = std::min<size_t>(count, mItems.size() - mNext);
        mNext += skipped;
        return skipped == count ? S_OK : S_FALSE;
    }
    STDMETHODIMP Reset() override {
        mNext = 0;
        return S_OK;
    }

  protected:
    SimpleEnumerator(std::vector<Stored> items, size_t next) : mItems(std::move(items)), mNext(next) {}

    // Gives the client `count` items; all or, on failure, none.
    virtual HRESULT CopyOut(const Stored* from, ULONG count, Item* to) = 0;

    const std::vector<Stored>& Items() const { return mItems; }
    size_t Position() const { return mNext; }

  private:
    std::vector<Stored> mItems;
    size_t mNext;
};

}  // namespace v5
