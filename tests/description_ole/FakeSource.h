// A source of events that stands for a window of the HTML engine: it counts who listens
// and fails where a test wants it to.
#pragma once

#include <map>
#include <stdexcept>

#include "contracts/HtmlEngine.h"

class TFakePoint : public IConnectionPoint {
public:
    THtmlStatus Advise(IHtmlEventSink& sink, std::uint32_t& cookie) override {
        if (AdviseStatus != hsOk) return AdviseStatus;
        cookie = ++LastCookie;
        Sinks[cookie] = &sink;
        return hsOk;
    }
    THtmlStatus Unadvise(std::uint32_t cookie) override {
        if (UnadviseRaises) throw std::runtime_error("The document is gone.");
        return Sinks.erase(cookie) == 1 ? hsOk : hsFail;
    }

    std::map<std::uint32_t, IHtmlEventSink*> Sinks;
    std::uint32_t LastCookie = 40;
    THtmlStatus AdviseStatus = hsOk;
    bool UnadviseRaises = false;
};

class TFakeSource : public IConnectionPointContainer {
public:
    explicit TFakeSource(std::string interfaceId)
        : InterfaceId(std::move(interfaceId)) {}

    THtmlStatus FindConnectionPoint(const std::string& interfaceId,
                                    THtmlHandle<IConnectionPoint>& point) override {
        point = interfaceId == InterfaceId ? Point : nullptr;
        return point ? hsOk : hsFail;
    }

    std::string InterfaceId;
    std::shared_ptr<TFakePoint> Point = std::make_shared<TFakePoint>();
};

// An object of the engine that gives out no events.
class TFakeObject : public IHtmlObject {};

class TFakeEvent : public IHTMLEventObj {
public:
    std::string get_type() override { return "focus"; }
};
