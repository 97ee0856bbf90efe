// The dialog for a table of the description: its size when it is inserted, its
// attributes when it is changed.
#pragma once

#include <cstdint>
#include <string>

#include "platform/widgets/Edits.h"
#include "platform/widgets/Forms.h"
#include "platform/widgets/Lists.h"

class TfrmTableProperties : public TForm {
public:
    TfrmTableProperties();

    TEdit* edtRows;
    TUpDown* upRows;
    TEdit* edtColumns;
    TUpDown* upColumns;
    TEdit* edtWidth;
    TComboBox* cbxWidthUnits;
    TEdit* edtHeight;
    TComboBox* cbxHeightUnits;
    TComboBox* cbxAlignment;
    TEdit* edtBorderWidth;
    TUpDown* upBorderWidth;
    TEdit* edtCellPadding;
    TUpDown* upCellPadding;
    TEdit* edtCellSpacing;
    TUpDown* upCellSpacing;
    TButton* btnOk;
    TButton* btnCancel;

private:
    class TRows;
    void BuildSize(TWinControl& box);
    void BuildLook(TWinControl& area);
    void BuildButtons(TWinControl& area);
};

// Shows the values and gives true when the user closed the dialog with OK; the
// references hold the new values then, and are as they were otherwise. Units are "%"
// and "px", and any other one shows as pixels. Alignments are "Left", "Right" and
// "Center" in any case; any other one comes back empty unless the user picks one.
// Re-enters the message loop. Raises EConvertError when a number's edit holds no
// integer; nothing is changed then.
bool ExecuteTableProperties(std::int32_t& rows, std::int32_t& columns, std::int32_t& width,
                            std::int32_t& height, std::int32_t& border, std::int32_t& cellPadding,
                            std::int32_t& cellSpacing, std::string& widthUnit, std::string& heightUnit,
                            std::string& alignment);
