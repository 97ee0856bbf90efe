// A tree with columns whose rows are asked of handlers when they are painted, and with
// a record of the caller's own type in each node.
#pragma once

#include <array>
#include <memory>
#include <string>
#include <utility>

#include "platform/widgets/tree/TreeView.h"

// A record as a data slot holds it.
template<class Record> class TNodeRecord : public TObject {
public:
    Record Value;
};

class TVirtualTree : public TTreeView {
public:
    explicit TVirtualTree(TWinControl* parent, const std::string& name = {});

    // What stands in a column of a node. These three are called while painting: a
    // failure shows in the error box afterwards, and once for the same text.
    TEvent<TTreeNode&, int, std::string&> OnGetText;
    TEvent<TTreeNode&, int, int&> OnGetImageIndex;
    // Sets bold for a column of a node.
    TEvent<TTreeNode&, int, bool&> OnPaintText;

    void AddColumn(const std::string& caption, int width);
    // A child at the end, or a top node for no parent, with its record.
    template<class Record> TTreeNode& AddNode(TTreeNode* parent, Record record) {
        auto slot = std::make_unique<TNodeRecord<Record>>();
        slot->Value = std::move(record);
        TTreeNode& node = parent ? AddChild(*parent, std::string()) : Add(std::string());
        node.SetData(std::move(slot));
        return node;
    }
    // The record that AddNode put in; empty for another type.
    template<class Record> static Record* NodeData(const TTreeNode& node) {
        auto* slot = node.DataAs<TNodeRecord<Record>>();
        return slot ? &slot->Value : nullptr;
    }

protected:
    void StructureChanged() override;
    int ColumnTotal() const override;
    QString NodeText(const TTreeNode& node, int column) const override;
    int NodeImage(const TTreeNode& node, int column, bool selected) const override;
    bool NodeBold(const TTreeNode& node, int column) const override;

private:
    template<class Handler, class... Arguments>
    void Ask(int question, const Handler& handler, Arguments&&... arguments) const;
    std::vector<std::string> FColumns;
    std::vector<int> FWidths;
    mutable std::array<bool, 3> FFailed{};
};
