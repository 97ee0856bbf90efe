#include "description/ole/MSHTMLEventsBaseSink.h"

#include "contracts/Exceptions.h"

TMSHTMLEventsBaseSink::TMSHTMLEventsBaseSink(TComponent* owner, const std::string& name)
    : TDataModule(owner, name) {}

TMSHTMLEventsBaseSink::~TMSHTMLEventsBaseSink() {
    Disconnect();
}

void TMSHTMLEventsBaseSink::Connect(const THtmlHandle<IHtmlObject>& source) {
    Disconnect();
    try {
        const auto container = std::dynamic_pointer_cast<IConnectionPointContainer>(source);
        if (!container) Ole::Check(Ole::StatusNoInterface);
        Ole::Check(container->FindConnectionPoint(FSinkIID, FConnectionPoint));
        Ole::Check(FConnectionPoint->Advise(*this, FCookie));
        FSource = source;
    } catch (const std::exception& error) {
        FConnectionPoint = nullptr;
        throw Exception("Unable to connect " + Name() + ".\r" + error.what());
    }
}

void TMSHTMLEventsBaseSink::Disconnect() {
    if (!FSource) return;
    try {
        FConnectionPoint->Unadvise(FCookie);
    } catch (const std::exception&) {
        // A source that is going away listens to nobody any more.
    }
    FConnectionPoint = nullptr;
    FSource = nullptr;
}

Ole::HResult TMSHTMLEventsBaseSink::QueryInterface(const std::string& iid, void*& object) {
    object = nullptr;
    if (iid == Ole::UnknownId) object = static_cast<Ole::IUnknown*>(this);
    if (iid == Ole::DispatchId || iid == FSinkIID) object = static_cast<Ole::IDispatch*>(this);
    return object ? Ole::StatusOk : Ole::StatusNoInterface;
}

Ole::HResult TMSHTMLEventsBaseSink::GetTypeInfoCount(std::int32_t& count) {
    count = 0;
    return Ole::StatusNotImplemented;
}

Ole::HResult TMSHTMLEventsBaseSink::GetTypeInfo(std::int32_t, std::uint32_t, Ole::ITypeInfo*& info) {
    info = nullptr;
    return Ole::StatusNotImplemented;
}

Ole::HResult TMSHTMLEventsBaseSink::GetIDsOfNames(const std::string&, const std::vector<std::u16string>&,
                                                  std::uint32_t, std::vector<std::int32_t>&) {
    return Ole::StatusNotImplemented;
}

static std::vector<std::int32_t> PositionsOf(const TEventArguments& params) {
    const std::size_t count = params.Values.size();
    std::vector<std::int32_t> positions(count);
    for (std::size_t i = 0; i < count; ++i)
        positions[i] = static_cast<std::int32_t>(count - 1 - i);
    for (std::size_t j = 0; j < params.Named.size(); ++j) {
        const auto entry = static_cast<std::size_t>(params.Named[j]);
        if (params.Named[j] < 0 || entry >= count) Ole::Check(Ole::StatusParameterNotFound);
        positions[entry] = static_cast<std::int32_t>(j);
    }
    return positions;
}

Ole::HResult TMSHTMLEventsBaseSink::Invoke(std::int32_t dispId, const std::string& iid,
                                           std::uint32_t localeId, std::uint16_t flags,
                                           const TEventArguments& params, THtmlValue* result,
                                           Ole::TExceptionInfo* exceptionInfo, std::uint32_t* argumentError) {
    if (!(flags & Ole::DispatchMethod))
        throw Exception(ClassName() + " only supports sinking of method calls!");
    return DoInvoke(dispId, iid, localeId, flags, params, PositionsOf(params), result, exceptionInfo,
                    argumentError);
}

THtmlStatus TMSHTMLEventsBaseSink::Invoke(std::int32_t dispId, std::uint16_t flags,
                                          const TEventArguments& arguments, THtmlValue& result) {
    return Invoke(dispId, {}, 0, flags, arguments, &result, nullptr, nullptr);
}

Ole::HResult TMSHTMLEventsBaseSink::DoInvoke(std::int32_t, const std::string&, std::uint32_t, std::uint16_t,
                                             const TEventArguments&, TArgumentPositions, THtmlValue*,
                                             Ole::TExceptionInfo*, std::uint32_t*) {
    return Ole::StatusMemberNotFound;
}

Ole::HResult TMSHTMLEventsBaseSink::StatusOf(const std::function<void()>& call) {
    try {
        call();
        return Ole::StatusOk;
    } catch (const EOleSysError& error) {
        FHandlerFailure = error.what();
        return error.ErrorCode() < 0 ? error.ErrorCode() : Ole::StatusUnexpected;
    } catch (const std::exception& error) {
        FHandlerFailure = error.what();
        return Ole::StatusUnexpected;
    }
}

void TMSHTMLEventsBaseSink::CheckHandler(Ole::HResult status) {
    if (status < 0) throw EOleSysError(FHandlerFailure, status);
}

void TMSHTMLEventsBaseSink::PutResult(THtmlValue* result, Quorane_TLB::WordBool answer) {
    if (result) *result = answer != Quorane_TLB::WordFalse;
}

const THtmlArgument& TSunkArguments::Value(std::size_t index) const {
    if (index >= FPositions.size()) Ole::Check(Ole::StatusBadParameterCount);
    const auto position = static_cast<std::size_t>(FPositions[index]);
    if (position >= FParams.Values.size()) Ole::Check(Ole::StatusBadParameterCount);
    return FParams.Values[position];
}

std::u16string TSunkArguments::Text(std::size_t index) const {
    const auto* text = std::get_if<std::u16string>(&Value(index));
    return text ? *text : std::u16string();
}

std::int32_t TSunkArguments::Integer(std::size_t index) const {
    const auto* number = std::get_if<std::int32_t>(&Value(index));
    return number ? *number : 0;
}

THtmlHandle<IHTMLEventObj> TSunkArguments::EventObject(std::size_t index) const {
    const auto* object = std::get_if<THtmlHandle<IHtmlObject>>(&Value(index));
    return object ? Quorane_TLB::Cast<IHTMLEventObj>(*object) : nullptr;
}
