// A tour through the product: steps in the studio's real window, each checked and each
// with a numbered picture.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "hosts/studio/Studio.h"
#include "support/Actor.h"
#include "support/ScriptedDialogs.h"
#include "support/TempFolder.h"

class TTour {
public:
    // Everything that the tour writes but the pictures goes into a folder of its own.
    explicit TTour(std::filesystem::path pictures);
    ~TTour();

    // Starts the studio as a user does, with the add-in beside the program.
    void StartStudio();
    // Closes its window and ends it.
    void CloseStudio();
    TStudio& Studio() { return *FStudio; }
    TActor& User() { return *FUser; }
    TScriptedDialogs& Dialogs() { return FDialogs; }

    // Does the step, prints its line and takes the picture of the main window. What
    // the step raises ends the tour, with a picture of how things stood.
    void Step(const std::string& title, const std::function<void()>& step);
    // A further picture, of another window.
    void Picture(const std::string& title, QWidget& window);

    // Raises std::runtime_error with the sentence unless the condition holds.
    static void Check(bool condition, const std::string& sentence);
    template<class T> static void CheckEqual(const T& got, const T& wanted, const std::string& what) {
        Check(got == wanted, what + ": got \"" + got + "\", wanted \"" + wanted + "\"");
    }

    // Chooses an entry of the menu bar by its object name.
    void ChooseMenu(const std::string& name);
    // The text of an edit or memo, the entry of a list, found by name.
    std::string Text(const std::string& name);
    // Fills the logon dialog in, which the next action brings up, and presses "Logon".
    void AnswerLogon(const std::string& user, const std::string& password, bool picture = false);

    int Steps() const { return FSteps; }

private:
    std::filesystem::path PicturePath(const std::string& title);

    std::filesystem::path FPictures;
    TTempFolder FFolder;
    TScriptedDialogs FDialogs;
    std::unique_ptr<TStudio> FStudio;
    std::unique_ptr<TActor> FUser;
    int FSteps = 0;
    int FNumber = 0;
};
