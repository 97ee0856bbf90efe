#include "platform/engine/HtmlObjects.h"

#include "contracts/Exceptions.h"

#include <QRegularExpression>

namespace {

QString Text(const std::u16string& text) {
    return QString::fromStdU16String(text);
}

QString Text(const std::string& text) {
    return QString::fromStdString(text);
}

int NumberOf(const QJsonValue& answer) {
    return answer[QLatin1String("$")].toInt();
}

class TStyle : public IHTMLStyle {
public:
    explicit TStyle(std::shared_ptr<TPageObject> element)
        : FElement(std::move(element)) {}

    void setAttribute(const std::u16string& name, const THtmlValue& value, std::int32_t) override {
        FElement->Call("setStyle", {Text(name), ToJson(value)});
    }

private:
    std::shared_ptr<TPageObject> FElement;
};

class TCollection : public IHTMLElementCollection {
public:
    explicit TCollection(std::vector<THtmlHandle<IHTMLElement>> elements)
        : FElements(std::move(elements)) {}

    std::int32_t get_length() override { return static_cast<std::int32_t>(FElements.size()); }
    THtmlHandle<IHTMLElement> item(std::int32_t index) override {
        return index >= 0 && index < get_length() ? FElements[static_cast<std::size_t>(index)] : nullptr;
    }

private:
    std::vector<THtmlHandle<IHTMLElement>> FElements;
};

class TElement : public IHTMLElement {
public:
    TElement(TEnginePage& page, int number, std::u16string tag)
        : FObject(std::make_shared<TPageObject>(page, number))
        , FTag(std::move(tag)) {}

    std::u16string get_tagName() override { return FTag; }
    std::u16string get_outerHTML() override { return FObject->Read("outerHTML").toString().toStdU16String(); }
    THtmlValue getAttribute(const std::u16string& name) override {
        return ToHtmlValue(FObject->Read("attribute", {Text(name)}));
    }
    void setAttribute(const std::u16string& name, const THtmlValue& value) override {
        FObject->Call("setAttribute", {Text(name), ToJson(value)});
    }
    THtmlHandle<IHTMLElementCollection> get_children() override {
        std::vector<THtmlHandle<IHTMLElement>> elements;
        const QJsonArray children = FObject->Read("children").toArray();
        for (const QJsonValue child : children)
            elements.push_back(MakeElement(FObject->Page(), child));
        return std::make_shared<TCollection>(std::move(elements));
    }
    THtmlHandle<IHTMLStyle> get_style() override { return std::make_shared<TStyle>(FObject); }

protected:
    void Set(const QString& name, const THtmlValue& value) {
        FObject->Post("setAttribute", {name, ToJson(value)});
    }
    template<class Part> std::shared_ptr<Part> Insert(const char* operation, int index, const char16_t* tag) {
        return std::make_shared<Part>(FObject->Page(), FObject->Make(operation, {index}), tag);
    }

private:
    std::shared_ptr<TPageObject> FObject;
    std::u16string FTag;
};

class TTableCell : public TElement, public IHTMLTableCell {
public:
    using TElement::TElement;
    void put_width(const THtmlValue& width) override { Set(QStringLiteral("width"), width); }
};

class TTableRow : public TElement, public IHTMLTableRow {
public:
    using TElement::TElement;
    THtmlHandle<IHTMLTableCell> insertCell(std::int32_t index) override {
        return Insert<TTableCell>("insertCell", index, u"TD");
    }
};

class TTable : public TElement, public IHTMLTable {
public:
    using TElement::TElement;
    THtmlHandle<IHTMLTableRow> insertRow(std::int32_t index) override {
        return Insert<TTableRow>("insertRow", index, u"TR");
    }
    void put_border(const THtmlValue& border) override { Set(QStringLiteral("border"), border); }
    void put_borderColor(const THtmlValue& color) override { Set(QStringLiteral("bordercolor"), color); }
    void put_cellSpacing(const THtmlValue& spacing) override { Set(QStringLiteral("cellspacing"), spacing); }
    void put_cellPadding(const THtmlValue& padding) override { Set(QStringLiteral("cellpadding"), padding); }
    void put_width(const THtmlValue& width) override { Set(QStringLiteral("width"), width); }
    void put_height(const THtmlValue& height) override { Set(QStringLiteral("height"), height); }
    void put_align(const std::u16string& align) override { Set(QStringLiteral("align"), align); }
};

// What both kinds of range do alike, over the interface of the kind. The agent's range
// is made when one is needed: the values of the selection are known without.
template<class Kind> class TRangeOf : public Kind {
public:
    TRangeOf(TEnginePage& page, int number)
        : FRange(page, number) {}

    bool execCommand(const std::string& name, bool, const THtmlValue& value) override {
        return FRange.Call("rangeCommand", {Text(name), ToJson(value)}).toBool();
    }
    THtmlValue queryCommandValue(const std::string& name) override {
        if (FRange.IsSelection()) {
            const QJsonObject values = FRange.Page().Selection()[QLatin1String("values")].toObject();
            const auto known = values.constFind(Text(name).toLower());
            if (known != values.constEnd()) return ToHtmlValue(*known);
        }
        return ToHtmlValue(FRange.Call("rangeValue", {Text(name)}));
    }

protected:
    TPageObject FRange;
};

class TControlRange : public TRangeOf<IHTMLControlRange> {
public:
    using TRangeOf::TRangeOf;
    THtmlHandle<IHTMLElement> commonParentElement() override {
        return MakeElement(FRange.Page(), FRange.Read("rangeControl"));
    }
};

class TTxtRange : public TRangeOf<IHTMLTxtRange> {
public:
    using TRangeOf::TRangeOf;

    std::u16string get_text() override { return FRange.Read("rangeText").toString().toStdU16String(); }
    void moveToPoint(std::int32_t x, std::int32_t y) override {
        // The page counts in pixels of its own, which the user may have enlarged.
        const qreal zoom = FRange.Page().zoomFactor();
        FRange.Move({QStringLiteral("point"), x / zoom, y / zoom});
    }
    void moveStart(const std::string& unit, std::int32_t count) override {
        FRange.Move({QStringLiteral("start"), Text(unit), count});
    }
    void moveEnd(const std::string& unit, std::int32_t count) override {
        FRange.Move({QStringLiteral("end"), Text(unit), count});
    }
    void collapse(bool toStart) override { FRange.Move({QStringLiteral("collapse"), toStart}); }
    THtmlHandle<IHTMLElement> parentElement() override {
        return MakeElement(FRange.Page(), FRange.Read("rangeParent"));
    }
    void pasteHTML(const std::u16string& html) override {
        const QString text = WithPictureAddresses(Text(html));
        FRange.Call("rangePaste", {text, FRange.Page().Guard().Chosen()});
    }

private:
    // Pictures that the user puts in come from anywhere on the disk, by their paths.
    QString WithPictureAddresses(QString html) {
        static const QRegularExpression source(QStringLiteral(R"re(<img\b[^>]*\bsrc="(/[^"]*)")re"),
                                               QRegularExpression::CaseInsensitiveOption);
        for (auto match = source.match(html); match.hasMatch();) {
            QString path = match.captured(1);
            path.replace(QStringLiteral("&quot;"), QStringLiteral("\""));
            path.replace(QStringLiteral("&amp;"), QStringLiteral("&"));
            const QString address = FRange.Page().Guard().Choose(path).toHtmlEscaped();
            html.replace(match.capturedStart(1), match.capturedLength(1), address);
            match = source.match(html, match.capturedStart(1) + address.size());
        }
        return html;
    }
};

} // namespace

QJsonValue ToJson(const THtmlValue& value) {
    struct {
        QJsonValue operator()(std::monostate) const { return QJsonValue::Null; }
        QJsonValue operator()(bool flag) const { return flag; }
        QJsonValue operator()(std::int32_t number) const { return number; }
        QJsonValue operator()(const std::u16string& text) const { return Text(text); }
    } convert;
    return std::visit(convert, value);
}

THtmlValue ToHtmlValue(const QJsonValue& value) {
    switch (value.type()) {
    case QJsonValue::Null:
    case QJsonValue::Undefined:
        return std::monostate{};
    case QJsonValue::Bool:
        return value.toBool();
    case QJsonValue::Double:
        return value.toInt();
    case QJsonValue::String:
        return value.toString().toStdU16String();
    default:
        throw EOleSysError("The HTML engine gave a value of a wrong kind.", hsFail);
    }
}

TPageObject::TPageObject(TEnginePage& page, int number)
    : FPage(&page)
    , FNumber(number)
    , FGeneration(page.Generation()) {}

TPageObject::~TPageObject() {
    if (FPage && FNumber > 0) FPage->Release(FNumber, FGeneration);
}

TEnginePage& TPageObject::Page() const {
    if (!Alive()) throw EOleSysError("The document is no longer there.", hsFail);
    return *FPage;
}

QJsonValue TPageObject::Run(const char* operation, const QJsonArray& arguments, bool reads) const {
    const QJsonValue value =
        Page().Call({QString::fromLatin1(operation), FNumber, arguments, FMoves, reads});
    FMoves = {};
    if (FNumber >= 0) return value;
    FNumber = NumberOf(value);
    return value[QLatin1String("value")];
}

QJsonValue TPageObject::Call(const char* operation, const QJsonArray& arguments) const {
    return Run(operation, arguments, false);
}

void TPageObject::Post(const char* operation, const QJsonArray& arguments) const {
    Page().Post(QString::fromLatin1(operation), FNumber, arguments);
}

int TPageObject::Make(const char* operation, const QJsonArray& arguments) const {
    const int made = Page().NewNumber();
    Page().Post(QString::fromLatin1(operation), FNumber, arguments, made);
    return made;
}

QJsonValue TPageObject::Read(const char* operation, const QJsonArray& arguments) const {
    return Run(operation, arguments, true);
}

THtmlHandle<IHTMLElement> MakeElement(TEnginePage& page, const QJsonValue& answer) {
    if (answer.isNull()) return nullptr;
    const int number = NumberOf(answer);
    const std::u16string tag = answer[QLatin1String("tag")].toString().toStdU16String();
    if (tag == u"TABLE") return std::make_shared<TTable>(page, number, tag);
    if (tag == u"TR") return std::make_shared<TTableRow>(page, number, tag);
    if (tag == u"TD" || tag == u"TH") return std::make_shared<TTableCell>(page, number, tag);
    return std::make_shared<TElement>(page, number, tag);
}

THtmlHandle<IHTMLRange> MakeRange(TEnginePage& page) {
    if (page.ControlSelected()) return std::make_shared<TControlRange>(page, ControlSelectionNumber);
    return std::make_shared<TTxtRange>(page, TextSelectionNumber);
}
