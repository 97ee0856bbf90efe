// Lists of 16 pixel pictures that controls show by index. The pictures of the product
// are drawings that take the palette's colours, sharp at every scale.
#pragma once

#include <string>
#include <vector>

#include <QIcon>
#include <QObject>

#include "platform/widgets/Basics.h"
#include "platform/widgets/Control.h"

class TImageList : public QObject, public TComponent {
public:
    // Owner may be empty: the list then belongs to whoever made it.
    explicit TImageList(TComponent* owner, const std::string& name = {});
    QObject& Object() override { return *this; }
    using TComponent::Object;

    int Count() const { return static_cast<int>(FIcons.size()); }
    // Puts the named drawing at an index; the list grows with blank pictures as needed.
    // Raises Exception for a name that no sheet has.
    void Put(int index, const std::string& iconName);
    // Each gives the index of the new picture.
    int Add(const std::string& iconName);
    int Add(const TBitmap& bitmap);
    // Pixels of that colour are transparent.
    int AddMasked(const TBitmap& bitmap, TColor transparent);
    // Four bytes a pixel (red, green, blue, opacity), row by row from the top.
    int AddRgba(int width, int height, const std::vector<std::uint8_t>& bytes);
    int AddFrom(const TImageList& other, int index);
    void Delete(int index);
    // Deletes all pictures from the last down to index.
    void Truncate(int index);

    // A blank icon for an index that does not exist.
    QIcon Icon(int index) const;
    // Name of the drawing, or empty for other pictures.
    std::string IconName(int index) const;

private:
    struct TEntry {
        QIcon Icon;
        std::string Name;
    };
    std::vector<TEntry> FIcons;
};

// A drawing by its name, in the colours of the palette. Raises Exception for a name
// that no sheet has.
QIcon NamedIcon(const std::string& iconName);
// The same as pixels on a background, for those who store or send them.
TBitmap NamedBitmap(const std::string& iconName, int size, TColor background);
// The names of all drawings, sorted.
std::vector<std::string> IconNames();
