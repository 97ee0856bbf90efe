#include "contracts/HtmlEngine.h"

#include "contracts/Exceptions.h"

namespace {
THtmlEngineFactory engineFactory;
}

// The destructors stand here, so that engine and editor agree on one set of classes.
IHtmlObject::~IHtmlObject() = default;
IHTMLStyle::~IHTMLStyle() = default;
IHTMLElement::~IHTMLElement() = default;
IHTMLElementCollection::~IHTMLElementCollection() = default;
IHTMLTableCell::~IHTMLTableCell() = default;
IHTMLTableRow::~IHTMLTableRow() = default;
IHTMLTable::~IHTMLTable() = default;
IHTMLRange::~IHTMLRange() = default;
IHTMLTxtRange::~IHTMLTxtRange() = default;
IHTMLControlRange::~IHTMLControlRange() = default;
IHTMLSelectionObject::~IHTMLSelectionObject() = default;
IHTMLEventObj::~IHTMLEventObj() = default;
IHTMLEditDesigner::~IHTMLEditDesigner() = default;
IHTMLEditServices::~IHTMLEditServices() = default;
IOleCommandTarget::~IOleCommandTarget() = default;
IPersistStreamInit::~IPersistStreamInit() = default;
IHtmlEventSink::~IHtmlEventSink() = default;
IConnectionPoint::~IConnectionPoint() = default;
IConnectionPointContainer::~IConnectionPointContainer() = default;
IHTMLWindow2::~IHTMLWindow2() = default;
IHTMLDocument2::~IHTMLDocument2() = default;
IHTMLDocument3::~IHTMLDocument3() = default;
IOleInPlaceActiveObject::~IOleInPlaceActiveObject() = default;
IWebBrowser::~IWebBrowser() = default;

void SetHtmlEngineFactory(THtmlEngineFactory factory) {
    engineFactory = std::move(factory);
}

std::unique_ptr<IWebBrowser> CreateWebBrowser(TWinControl& parent, const std::string& name) {
    if (!engineFactory) throw EOleSysError("No HTML engine is installed.", hsFail);
    return engineFactory(parent, name);
}
