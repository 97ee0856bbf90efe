// Between the server's plain values and the messages on the wire.
#pragma once

#include "backend/rules/Changes.h"
#include "backend/store/RequirementTable.h"
#include "backend/store/TreeTable.h"

#include "quorane.pb.h"

namespace Backend {

namespace wire = quorane::wire;

void ToWire(const Directory& directory, wire::Directory& message);
void ToWire(const Project& project, wire::Project& message);
void ToWire(const RequirementType& type, wire::RequirementType& message);
void ToWire(const AttributeValue& value, wire::AttributeValue& message);
void ToWire(const Version& version, wire::Version& message);
void ToWire(const TreeNode& node, wire::Node& message);
void ToWire(const DocumentReference& reference, wire::DocumentReference& message);
void ToWire(const Assignment& assignment, wire::Assignment& message);
void ToWire(const HistoryRevision& revision, wire::HistoryRevision& message);
void ToWire(const Glossary& glossary, wire::Glossary& message);
void ToWire(const Integration& integration, wire::Integration& message);
void ToWire(const ExternalObject& object, wire::IntegrationObject& message);

AttributeValue FromWire(const wire::AttributeValue& message);
// Raises RuleViolation for a reference without a kind.
RequirementChange FromWire(const wire::SaveRequirementRequest& message);

// "SRS12": how a requirement is called in labels and in sentences.
std::string SerialNumber(const std::string& tag, ObjectId requirementId);

} // namespace Backend
