// The bar under the editors in which a text is searched in the editor in front.
#pragma once

#include <QWidget>

#include <functional>

class QCheckBox;
class QLabel;
class QLineEdit;
class TSourceEdit;

class TFindBar : public QWidget {
public:
    // currentEditor gives the editor to search in, or empty.
    TFindBar(std::function<TSourceEdit*()> currentEditor, QWidget* parent);

    // Shows the bar, takes over a selection of one line and gets the focus.
    void Open();

    // Selects the next hit from the cursor on, around the end of the text. Gives
    // false when there is none.
    bool FindNext(bool forward);

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void Dismiss();
    void FindWhileTyping();
    bool Find(bool forward, int line, int column);
    void ShowResult(bool found);

    std::function<TSourceEdit*()> FCurrentEditor;
    QLineEdit* FText;
    QCheckBox* FMatchCase;
    QCheckBox* FWholeWord;
    QLabel* FResult;
};
