// A process that edits is killed at any moment, again and again: what it was told to
// be committed is there, nothing is there by half, and the tree stays sound.
#include "backend/rules/Editing.h"
#include "backend/service/BulkWriter.h"
#include "support/SoundDatabase.h"
#include "support/TempFolder.h"

#include <gmock/gmock.h>

#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <random>

using namespace Backend;
using namespace testing;

namespace {

constexpr int Rounds = 300;

struct Scene {
    ObjectId User = 0, Project = 0, TypeA = 0, TypeB = 0, Counter = 0;
};

Scene Build(const std::string& path) {
    BulkWriter writer(path, BulkWriter::Hashing::QuickForTests);
    Scene scene;
    scene.User = writer.AddUser({"ann", "", "Password1"});
    scene.Project = writer.AddProject({"P", ""});
    scene.TypeA = writer.AddRequirementType(scene.Project, {"A", "A", ""});
    scene.TypeB = writer.AddRequirementType(scene.Project, {"B", "B", ""});
    NewRequirement requirement;
    requirement.ProjectId = scene.Project;
    requirement.TypeId = scene.TypeA;
    requirement.Name = "0";
    scene.Counter = writer.AddRequirement(requirement, {scene.User, 1, ""});
    writer.Commit();
    return scene;
}

class Editor {
public:
    Editor(const std::string& path, const Scene& scene, unsigned seed)
        : FPool(path)
        , FScene(scene)
        , FRandom(seed) {}

    // One transaction: counts up, and makes, moves, reparents or removes something.
    void Edit() {
        ConnectionPool::Lease connection = FPool.Write();
        FBaseline = connection->Projects.CurrentBaseline(FScene.Project);
        Editing editing(*connection);
        const TreePlace counter = connection->Trees.Find(FBaseline, FScene.Counter).value();
        const std::string count = connection->Requirements.ReadVersion(counter.VersionId)->Name;
        RequirementChange change;
        change.Name = std::to_string(std::stoi(count) + 1);
        change.Description = "<p>" + *change.Name + "</p>";
        editing.Save(counter, change, {FScene.User, 2, ""});
        Reshape(*connection, editing);
        connection.Commit();
    }

private:
    void Reshape(Connection& connection, Editing& editing) {
        TreeTable& trees = connection.Trees;
        std::vector<ObjectId> nodes = trees.Branch(FBaseline, FScene.TypeA);
        const std::vector<ObjectId> others = trees.Branch(FBaseline, FScene.TypeB);
        nodes.insert(nodes.end(), others.begin(), others.end());
        const TreePlace one = trees.Find(FBaseline, nodes[FRandom() % nodes.size()]).value();
        const TreePlace two = trees.Find(FBaseline, nodes[FRandom() % nodes.size()]).value();
        const bool plain = one.VersionId != 0 && one.NodeId != FScene.Counter;
        const bool cycle = one.NodeId == two.NodeId || trees.IsBelow(FBaseline, two.NodeId, one.NodeId);
        if (plain && !cycle && FRandom() % 3 == 0) return editing.Reparent(one, two, {FScene.User, 2, ""});
        if (plain && FRandom() % 3 == 0) return trees.Move(one, static_cast<int>(FRandom() % 3));
        if (plain && nodes.size() > 20 && !trees.IsBelow(FBaseline, FScene.Counter, one.NodeId)) {
            editing.Remove(one);
            return;
        }
        NewRequirement requirement;
        requirement.Name = "N";
        requirement.Description = std::string(5000, 'x');
        const ObjectId id = connection.Numbers.Next();
        const std::int64_t version =
            editing.MakeRequirement(id, one.TypeId, requirement, {FScene.User, 2, ""});
        trees.Insert({FBaseline, one.NodeId, 0, id, one.TypeId, version, 0}, static_cast<int>(FRandom() % 3));
    }

    ConnectionPool FPool;
    Scene FScene;
    std::mt19937 FRandom;
    ObjectId FBaseline = 0;
};

// Runs an editing process, kills it after some commits, and gives their number.
int EditAndKill(const std::string& path, const Scene& scene, unsigned seed) {
    int ends[2];
    EXPECT_EQ(pipe(ends), 0);
    const pid_t child = fork();
    if (child == 0) {
        try {
            Editor editor(path, scene, seed);
            for (;;) {
                editor.Edit();
                if (write(ends[1], "x", 1) != 1) _exit(1);
            }
        } catch (const std::exception& error) {
            fprintf(stderr, "%s\n", error.what());
            _exit(2);
        }
    }
    close(ends[1]);
    std::mt19937 random(seed);
    int commits = 0;
    char byte = 0;
    for (unsigned wanted = random() % 4; wanted > 0 && read(ends[0], &byte, 1) == 1; --wanted)
        ++commits;
    // A moment of any length within the next edit.
    poll(nullptr, 0, static_cast<int>(random() % 3));
    kill(child, SIGKILL);
    while (read(ends[0], &byte, 1) == 1)
        ++commits;
    close(ends[0]);
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_TRUE(WIFSIGNALED(status)) << "the editing process failed by itself";
    return commits;
}

TEST(Kill, AtAnyMomentLeavesASoundDatabaseWithEveryCommittedEdit) {
    const TTempFolder folder;
    const std::string path = folder.File("quorane.db");
    const Scene scene = Build(path);
    int count = 0, edits = 0;
    for (unsigned round = 0; round < Rounds && !HasFailure(); ++round) {
        const int commits = EditAndKill(path, scene, round);
        Database database(path);
        ExpectSound(database);
        Rows rows =
            database.Query("select v.name from tree_node n join requirement_version v on v.id = n.version_id "
                           "where n.node_id = $1",
                           scene.Counter);
        ASSERT_TRUE(rows.Next());
        const int now = std::stoi(rows.Text(0));
        // The last edit may have been committed and not been reported any more.
        EXPECT_THAT(now - count, AnyOf(commits, commits + 1)) << "round " << round;
        count = now;
        edits += commits;
    }
    EXPECT_GT(edits, Rounds / 2);
}

} // namespace
