#include "platform/widgets/look/HtmlView.h"

#include <QUrl>

#include "platform/widgets/QtText.h"

THtmlView::THtmlView(TWinControl* parent, const std::string& name)
    : TScrollingControlOf(parent, name) {
    setOpenLinks(false);
    setUndoRedoEnabled(false);
    QObject::connect(this, &QTextBrowser::anchorClicked,
                     [this](const QUrl& address) { Fire(OnLinkClick, FromQt(address.toString())); });
}

void THtmlView::SetHtml(const std::u16string& html) {
    setHtml(ToQt(html));
}

QVariant THtmlView::loadResource(int, const QUrl&) {
    return {};
}
