// A flag that is set while a block runs and has its old value again however the block
// ends, so that a run inside another one does not end the outer one's flag.
#pragma once

class TScopedFlag {
public:
    explicit TScopedFlag(bool& flag)
        : FFlag(flag)
        , FBefore(flag) {
        FFlag = true;
    }
    ~TScopedFlag() { FFlag = FBefore; }
    TScopedFlag(const TScopedFlag&) = delete;
    TScopedFlag& operator=(const TScopedFlag&) = delete;

private:
    bool& FFlag;
    const bool FBefore;
};
