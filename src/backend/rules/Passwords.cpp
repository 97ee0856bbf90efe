#include "backend/rules/Passwords.h"

#include "backend/rules/Refusal.h"

#include <sodium.h>

#include <array>
#include <condition_variable>
#include <mutex>
#include <stdexcept>

namespace Backend {

namespace {

constexpr int MaxAtOnce = 2;
constexpr int MaxWaiting = 64;

void EnsureSodium() {
    if (sodium_init() < 0) throw std::runtime_error("The cryptography library cannot be started.");
}

} // namespace

struct Passwords::State {
    unsigned long long Operations;
    std::size_t Memory;
    std::mutex Guard;
    std::condition_variable Freed;
    int Running = 0;
    int Waiting = 0;
    std::string Nobody; // the hash of a password that nobody knows

    // One of the places at which a hash may be computed.
    class Place {
    public:
        explicit Place(State& state)
            : FState(state) {
            std::unique_lock lock(FState.Guard);
            if (FState.Running >= MaxAtOnce && FState.Waiting >= MaxWaiting)
                throw Refusal(Refusal::Reason::Busy, "ServerBusyException",
                              "Too many users log on at this moment; try again.");
            ++FState.Waiting;
            FState.Freed.wait(lock, [&] { return FState.Running < MaxAtOnce; });
            --FState.Waiting;
            ++FState.Running;
        }
        ~Place() {
            const std::lock_guard lock(FState.Guard);
            --FState.Running;
            FState.Freed.notify_one();
        }

    private:
        State& FState;
    };
};

Passwords::Passwords(PasswordHashing hashing)
    : FState(std::make_unique<State>()) {
    EnsureSodium();
    const bool secure = hashing == PasswordHashing::Secure;
    FState->Operations = secure ? crypto_pwhash_OPSLIMIT_INTERACTIVE : crypto_pwhash_OPSLIMIT_MIN;
    FState->Memory = secure ? crypto_pwhash_MEMLIMIT_INTERACTIVE : crypto_pwhash_MEMLIMIT_MIN;
}

Passwords::~Passwords() = default;

std::string Passwords::Hash(const std::string& password) {
    const State::Place place(*FState);
    std::array<char, crypto_pwhash_STRBYTES> text{};
    if (crypto_pwhash_str(text.data(), password.data(), password.size(), FState->Operations,
                          FState->Memory) != 0)
        throw std::runtime_error("There is not enough memory to check a password.");
    return text.data();
}

bool Passwords::Matches(const std::string& hash, const std::string& password) {
    const State::Place place(*FState);
    return crypto_pwhash_str_verify(hash.c_str(), password.data(), password.size()) == 0;
}

void Passwords::MatchNothing(const std::string& password) {
    std::string nobody;
    {
        const std::lock_guard lock(FState->Guard);
        nobody = FState->Nobody;
    }
    if (nobody.empty()) {
        nobody = Hash(NewToken());
        const std::lock_guard lock(FState->Guard);
        FState->Nobody = nobody;
        return; // making it took as long as a comparison
    }
    Matches(nobody, password);
}

std::string NewToken() {
    EnsureSodium();
    std::string token(16, '\0');
    randombytes_buf(token.data(), token.size());
    return token;
}

std::string TokenHash(std::string_view token) {
    std::string hash(crypto_generichash_BYTES, '\0');
    crypto_generichash(reinterpret_cast<unsigned char*>(hash.data()), hash.size(),
                       reinterpret_cast<const unsigned char*>(token.data()), token.size(), nullptr, 0);
    return hash;
}

std::string ContentHash(std::string_view bytes) {
    std::array<unsigned char, crypto_hash_sha256_BYTES> hash{};
    crypto_hash_sha256(hash.data(), reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size());
    std::string hex(2 * hash.size() + 1, '\0');
    sodium_bin2hex(hex.data(), hex.size(), hash.data(), hash.size());
    hex.pop_back();
    return hex;
}

} // namespace Backend
