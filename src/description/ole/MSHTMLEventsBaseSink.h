// The common part of the sinks that turn the events of a document, window or element of
// the HTML engine into handlers, one class for each of the engine's event interfaces.
//
// Events come on the thread of the engine, which is the user interface's. A sink is not
// counted: its owner decides on its life, and it leaves its source when it goes.
#pragma once

#include <functional>
#include <span>

#include "contracts/EventDispatch.h"
#include "platform/widgets/Forms.h"
#include "server/tlb/Handle.h"

// For each argument in its order, where it stands among the values of the call.
using TArgumentPositions = std::span<const std::int32_t>;

class TMSHTMLEventsBaseSink : public TDataModule, public Ole::IDispatch, public IHtmlEventSink {
public:
    explicit TMSHTMLEventsBaseSink(TComponent* owner = nullptr, const std::string& name = {});
    ~TMSHTMLEventsBaseSink() override;

    virtual std::string ClassName() const = 0;

    // Leaves the last source and listens to this one, which is kept until Disconnect.
    // Raises Exception when the source has no such events, and is unconnected then.
    void Connect(const THtmlHandle<IHtmlObject>& source);
    // Raises nothing: a source that fails here may be gone already.
    void Disconnect();
    bool Connected() const { return FSource != nullptr; }

    // Knows IUnknown, IDispatch and the event interface, whose calls IDispatch takes.
    Ole::HResult QueryInterface(const std::string& iid, void*& object) override;
    std::int32_t _AddRef() override { return 2; }
    std::int32_t _Release() override { return 1; }
    Ole::HResult GetTypeInfoCount(std::int32_t& count) override;
    Ole::HResult GetTypeInfo(std::int32_t index, std::uint32_t localeId, Ole::ITypeInfo*& info) override;
    Ole::HResult GetIDsOfNames(const std::string& iid, const std::vector<std::u16string>& names,
                               std::uint32_t localeId, std::vector<std::int32_t>& dispIds) override;

    // Raises Exception for anything but a call of a method, EOleSysError for arguments
    // that do not fit the event, and what DoInvoke raises.
    Ole::HResult Invoke(std::int32_t dispId, const std::string& iid, std::uint32_t localeId,
                        std::uint16_t flags, const TEventArguments& params, THtmlValue* result,
                        Ole::TExceptionInfo* exceptionInfo, std::uint32_t* argumentError) override;
    // The same, without what the engine has no use for.
    THtmlStatus Invoke(std::int32_t dispId, std::uint16_t flags, const TEventArguments& arguments,
                       THtmlValue& result) override;

    // Calls the handler of the event. StatusOk for an event of the interface, bound or
    // not, StatusMemberNotFound for any other. A handler that raises ends in an
    // EOleSysError with the handler's message.
    virtual Ole::HResult DoInvoke(std::int32_t dispId, const std::string& iid, std::uint32_t localeId,
                                  std::uint16_t flags, const TEventArguments& params,
                                  TArgumentPositions positions, THtmlValue* result,
                                  Ole::TExceptionInfo* exceptionInfo, std::uint32_t* argumentError);

protected:
    template<class Handler, class... Arguments>
    Ole::HResult Call(const Handler& handler, const Arguments&... arguments) {
        if (!handler) return Ole::StatusOk;
        // The handler may bind another one in its own place.
        return StatusOf([this, &arguments..., copy = handler] { copy(*this, arguments...); });
    }
    // result is false without a handler and after one that raised.
    template<class Handler, class... Arguments>
    Ole::HResult CallForResult(const Handler& handler, Quorane_TLB::WordBool& result,
                               const Arguments&... arguments) {
        result = Quorane_TLB::WordFalse;
        if (!handler) return Ole::StatusOk;
        return StatusOf(
            [this, &result, &arguments..., copy = handler] { result = copy(*this, arguments...); });
    }
    // Raises again what the handler raised when the status is a failure.
    void CheckHandler(Ole::HResult status);
    static void PutResult(THtmlValue* result, Quorane_TLB::WordBool answer);

    std::uint32_t FCookie = 0;
    THtmlHandle<IConnectionPoint> FConnectionPoint;
    std::string FSinkIID; // set by each constructor
    THtmlHandle<IHtmlObject> FSource;

private:
    Ole::HResult StatusOf(const std::function<void()>& call);

    std::string FHandlerFailure;
};

// The arguments of one call by their order in the event. A value of another kind than
// the event publishes reads as the empty one. Raises EOleSysError for one that is missing.
class TSunkArguments {
public:
    TSunkArguments(const TEventArguments& params, TArgumentPositions positions)
        : FParams(params)
        , FPositions(positions) {}

    const THtmlArgument& Value(std::size_t index) const;
    std::u16string Text(std::size_t index) const;
    std::int32_t Integer(std::size_t index) const;
    // Raises EConvertError for an object that is no event object.
    THtmlHandle<IHTMLEventObj> EventObject(std::size_t index) const;

private:
    const TEventArguments& FParams;
    TArgumentPositions FPositions;
};
