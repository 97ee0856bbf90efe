// A read-only view of an HTML text. It fetches nothing: neither from a network nor
// from files, so a text that comes from elsewhere cannot call home by being shown.
#pragma once

#include <string>

#include <QTextBrowser>

#include "platform/widgets/Control.h"

class THtmlView : public TScrollingControlOf<QTextBrowser> {
public:
    explicit THtmlView(TWinControl* parent, const std::string& name = {});

    // The user has clicked a link; its address. Nothing else happens then.
    TEvent<std::string> OnLinkClick;

    // A whole document or a part of one.
    void SetHtml(const std::u16string& html);
    void Clear() { SetHtml(std::u16string()); }

protected:
    QVariant loadResource(int type, const QUrl& name) override;
};
