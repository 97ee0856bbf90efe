// The root of what data slots own and of what drags carry, so that a widget can
// hold an object of a layer that it does not know.
#pragma once

#include <string>
#include <utility>

class TObject {
public:
    TObject() = default;
    virtual ~TObject();

    TObject(const TObject&) = delete;
    TObject& operator=(const TObject&) = delete;
};

// A text that the user drags out of a source editor of the host.
class TEditTextDragObject : public TObject {
public:
    // text and fileName are UTF-8; fileName is empty for a file never saved.
    TEditTextDragObject(std::string text, std::string fileName)
        : FText(std::move(text))
        , FFileName(std::move(fileName)) {}
    ~TEditTextDragObject() override;

    const std::string& Text() const { return FText; }
    const std::string& FileName() const { return FFileName; }

private:
    std::string FText;
    std::string FFileName;
};

// A widget from which a drag starts and that can say what it drags. A drop target
// asks the drag's source widget for this interface.
class IDragSource {
public:
    virtual ~IDragSource();

    // What the drag under way carries; owned by the source, alive until the drag
    // ends. Empty while nothing is dragged.
    virtual TObject* DragObject() = 0;
};
