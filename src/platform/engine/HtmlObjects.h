// The engine's objects as the editor knows them: each a number in the agent's table,
// good as long as its document is.
#pragma once

#include "contracts/HtmlEngine.h"
#include "platform/engine/EnginePage.h"

#include <QPointer>

QJsonValue ToJson(const THtmlValue& value);
// Raises EOleSysError for a value that is no plain one.
THtmlValue ToHtmlValue(const QJsonValue& value);

// The link of an object to its page and document.
class TPageObject {
public:
    // number 0 is the document itself. With one of the numbers of the selection the
    // object is made by the first call on it.
    TPageObject(TEnginePage& page, int number);
    ~TPageObject();

    TPageObject(const TPageObject&) = delete;
    TPageObject& operator=(const TPageObject&) = delete;

    QJsonValue Call(const char* operation, const QJsonArray& arguments = {}) const;
    // Without waiting; a failure comes with a later call.
    void Post(const char* operation, const QJsonArray& arguments = {}) const;
    // The same for an operation that makes an object; gives its number.
    int Make(const char* operation, const QJsonArray& arguments) const;
    // For an operation that changes neither document nor selection.
    QJsonValue Read(const char* operation, const QJsonArray& arguments = {}) const;
    // Does a move of a range before the next call.
    void Move(const QJsonArray& move) { FMoves.append(move); }
    // Raises EOleSysError when the document is gone.
    TEnginePage& Page() const;
    // Whether it is still the selection and no object of its own.
    bool IsSelection() const { return FNumber < 0 && FMoves.isEmpty(); }
    bool Alive() const { return FPage && FPage->Ready() && FPage->Generation() == FGeneration; }

private:
    QJsonValue Run(const char* operation, const QJsonArray& arguments, bool reads) const;

    QPointer<TEnginePage> FPage;
    mutable int FNumber;
    int FGeneration;
    mutable QJsonArray FMoves;
};

// The element that the agent's answer describes, with the interfaces of its kind; empty
// for null.
THtmlHandle<IHTMLElement> MakeElement(TEnginePage& page, const QJsonValue& answer);
// A range over the selection.
THtmlHandle<IHTMLRange> MakeRange(TEnginePage& page);
