#include "backend/store/GlossaryTable.h"

#include <map>

namespace Backend {

void GlossaryTable::Add(ObjectId projectId, const Glossary& glossary) {
    FDatabase.Run("insert into glossary (id, project_id, position, name, red, green, blue) values ($1, $2, "
                  "(select count(*) from glossary where project_id = $2), $3, $4, $5, $6)",
                  glossary.Id, projectId, glossary.Name, glossary.Red, glossary.Green, glossary.Blue);
    int position = 0;
    for (const GlossaryTerm& term : glossary.Terms)
        FDatabase.Run("insert into glossary_term (id, glossary_id, position, name, definition) "
                      "values ($1, $2, $3, $4, $5)",
                      term.Id, glossary.Id, position++, term.Name, term.Definition);
}

std::vector<Glossary> GlossaryTable::ReadAll(ObjectId projectId) {
    std::map<ObjectId, std::vector<GlossaryTerm>> terms;
    Rows rows = FDatabase.Query("select t.glossary_id, t.id, t.name, t.definition from glossary g "
                                "join glossary_term t on t.glossary_id = g.id where g.project_id = $1 "
                                "order by t.position",
                                projectId);
    while (rows.Next())
        terms[rows.Int(0)].push_back({rows.Int(1), rows.Text(2), rows.Text(3)});
    std::vector<Glossary> glossaries;
    Rows found = FDatabase.Query("select id, name, red, green, blue from glossary where project_id = $1 "
                                 "order by position",
                                 projectId);
    while (found.Next())
        glossaries.push_back({found.Int(0), found.Text(1), found.Int(2), found.Int(3), found.Int(4),
                              std::move(terms[found.Int(0)])});
    return glossaries;
}

void ImageTable::Add(const std::string& hash, const std::string& mediaType, std::string_view data) {
    FDatabase.Run(
        "insert into image (hash, media_type, data) values ($1, $2, $3) on conflict (hash) do nothing", hash,
        mediaType, Bytes{data});
}

std::optional<Image> ImageTable::Read(const std::string& hash) {
    Rows rows = FDatabase.Query("select media_type, data from image where hash = $1", hash);
    return rows.Next() ? std::optional(Image{rows.Text(0), rows.Text(1)}) : std::nullopt;
}

} // namespace Backend
