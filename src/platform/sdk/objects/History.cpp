#include "platform/sdk/objects/Make.h"

#include <ctime>

namespace Sdk {

namespace {

using TRevisions = std::vector<wire::HistoryRevision>;

class THistoryChange final : public IHistoryChange {
public:
    THistoryChange(std::shared_ptr<const TRevisions> revisions, const wire::HistoryChange& change)
        : FRevisions(std::move(revisions))
        , FChange(change) {}

    std::u16string Get_AttributeName() override {
        const TCall call("IHistoryChange.Get_AttributeName");
        return Wide(FChange.attribute_name());
    }

    Variant Get_NewValue() override {
        const TCall call("IHistoryChange.Get_NewValue");
        return ToValue(FChange.new_value());
    }

    Variant Get_OldValue() override {
        const TCall call("IHistoryChange.Get_OldValue");
        return ToValue(FChange.old_value());
    }

private:
    static Variant ToValue(const wire::HistoryValue& value) {
        switch (value.value_case()) {
        case wire::HistoryValue::kText:
            return Wide(value.text());
        case wire::HistoryValue::kInteger:
            return value.integer();
        case wire::HistoryValue::kReal:
            return Variant::Float(value.real());
        case wire::HistoryValue::kFlag:
            return Variant::Boolean(ToWordBool(value.flag()));
        case wire::HistoryValue::kDate:
            return value.date();
        default:
            return Variant::Null();
        }
    }

    const std::shared_ptr<const TRevisions> FRevisions; // keeps FChange
    const wire::HistoryChange& FChange;
};

class THistoryRevision final : public IHistoryRevision {
public:
    THistoryRevision(std::shared_ptr<const TRevisions> revisions, const wire::HistoryRevision& revision)
        : FRevisions(std::move(revisions))
        , FRevision(revision) {}

    Handle<IStCollection> Get_Changes() override {
        const TCall call("IHistoryRevision.Get_Changes");
        std::vector<Variant> changes;
        for (const wire::HistoryChange& change : FRevision.changes())
            changes.emplace_back(std::make_shared<THistoryChange>(FRevisions, change));
        return MakeCollection(std::move(changes));
    }

    std::u16string Get_Comment() override {
        const TCall call("IHistoryRevision.Get_Comment");
        return Wide(FRevision.comment());
    }

    double Get_Date() override {
        const TCall call("IHistoryRevision.Get_Date");
        return LocalDate(FRevision.date());
    }

    std::u16string Get_UserName() override {
        const TCall call("IHistoryRevision.Get_UserName");
        return Wide(FRevision.user_name());
    }

    Handle<IVersion> Get_Version() override {
        const TCall call("IHistoryRevision.Get_Version");
        return MakeVersion(FRevision.version());
    }

private:
    const std::shared_ptr<const TRevisions> FRevisions; // keeps FRevision
    const wire::HistoryRevision& FRevision;
};

class THistory final : public IHistory {
public:
    THistory(TSessionHandle session, std::int32_t id, std::int32_t baselineId)
        : FSession(std::move(session))
        , FId(id)
        , FBaselineId(baselineId) {}

    Handle<IStCollection> Get_Revisions() override {
        const TCall call("IHistory.Get_Revisions");
        const auto revisions = std::make_shared<const TRevisions>(FSession->History(FId, FBaselineId));
        std::vector<Variant> elements;
        for (const wire::HistoryRevision& revision : *revisions)
            elements.emplace_back(std::make_shared<THistoryRevision>(revisions, revision));
        return MakeCollection(std::move(elements));
    }

private:
    const TSessionHandle FSession;
    const std::int32_t FId;
    const std::int32_t FBaselineId;
};

} // namespace

double LocalDate(std::int64_t microsecondsUtc) {
    constexpr std::int64_t second = 1'000'000;
    constexpr double daysTo1970 = 25569.0;
    const std::int64_t rest = ((microsecondsUtc % second) + second) % second;
    const auto seconds = static_cast<std::time_t>((microsecondsUtc - rest) / second);
    std::tm local{};
    localtime_r(&seconds, &local);
    const double here = static_cast<double>(seconds + local.tm_gmtoff);
    return daysTo1970 + (here + static_cast<double>(rest) / second) / 86400.0;
}

Handle<IHistory> MakeHistory(const TSessionHandle& session, std::int32_t id, std::int32_t baselineId) {
    return std::make_shared<THistory>(session, id, baselineId);
}

} // namespace Sdk
