// The document on show: editing mode, selection, dirty state, designers and events.
#pragma once

#include "platform/engine/HtmlObjects.h"

#include <map>

class THtmlDocument : public IHTMLDocument2,
                      public IHTMLDocument3,
                      public IOleCommandTarget,
                      public IPersistStreamInit,
                      public IHTMLEditServices,
                      public IHTMLWindow2,
                      public IConnectionPointContainer,
                      public IConnectionPoint,
                      public std::enable_shared_from_this<THtmlDocument> {
public:
    explicit THtmlDocument(TEnginePage& page);

    void put_designMode(const std::string& mode) override;
    std::string get_designMode() override;
    void put_charset(const std::string& charset) override;
    THtmlHandle<IHTMLSelectionObject> get_selection() override;
    THtmlHandle<IHTMLElement> createElement(const std::string& tagName) override;
    THtmlHandle<IHTMLWindow2> get_parentWindow() override;
    THtmlHandle<IHTMLEditServices> get_EditServices() override;
    THtmlHandle<IHTMLElement> get_documentElement() override;
    THtmlStatus Exec(std::uint32_t command, std::uint32_t option, const THtmlValue& in) override;
    THtmlStatus QueryStatus(std::uint32_t command, std::uint32_t& flags) override;
    THtmlStatus IsDirty() override;
    THtmlStatus InitNew() override;
    THtmlStatus AddDesigner(IHTMLEditDesigner& designer) override;
    THtmlStatus RemoveDesigner(IHTMLEditDesigner& designer) override;
    THtmlStatus FindConnectionPoint(const std::string& interfaceId,
                                    THtmlHandle<IConnectionPoint>& point) override;
    THtmlStatus Advise(IHtmlEventSink& sink, std::uint32_t& cookie) override;
    THtmlStatus Unadvise(std::uint32_t cookie) override;

    // News from the page.
    void Tell(const QJsonObject& message);
    void TellFocus(bool focused);
    std::function<void(const std::u16string& html)> OnTextChanged;
    bool Alive() const { return FObject.Alive(); }
    bool Editing() const { return FEditing; }

private:
    void SetDirty(bool dirty);
    void TellDesigners(const QString& type);

    TPageObject FObject;
    std::vector<IHTMLEditDesigner*> FDesigners;
    std::map<std::uint32_t, IHtmlEventSink*> FSinks;
    std::uint32_t FLastCookie = 0;
    bool FDirty = false;
    bool FEditing = false;
    int FEpoch = 0;
};
