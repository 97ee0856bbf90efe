-- Counters. 'number' is the last object number that was given, 'directory' the
-- revision of users and groups.
create table counter (
    name text primary key,
    value integer not null check (value between 0 and 2147483647)
) without rowid;
insert into counter values ('number', 0), ('directory', 1);

-- Users, groups and sessions.

create table user_account (
    id integer primary key,
    user_name text not null unique check (length(user_name) between 1 and 64),
    name text not null check (length(name) between 1 and 128),
    password_hash text not null,
    disabled integer not null default 0 check (disabled in (0, 1)),
    must_change_password integer not null default 0 check (must_change_password in (0, 1)),
    administrator integer not null default 0 check (administrator in (0, 1))
);

create table user_group (
    id integer primary key,
    name text not null unique check (length(name) between 1 and 128)
);

create table group_member (
    group_id integer not null references user_group (id) on delete cascade,
    user_id integer not null references user_account (id),
    primary key (group_id, user_id)
) without rowid;
create index group_member_user on group_member (user_id);

-- A token is kept as a hash, so that a copy of the file opens no session.
create table session (
    id integer primary key,
    token_hash blob not null unique,
    user_id integer not null references user_account (id),
    client text not null,
    created integer not null,
    expires integer not null
);
create index session_expires on session (expires);

-- Projects and baselines.

create table project (
    id integer primary key,
    name text not null unique check (length(name) between 1 and 128),
    description text not null
);

create table project_group (
    project_id integer not null references project (id),
    position integer not null,
    group_id integer not null references user_group (id),
    primary key (project_id, position),
    unique (project_id, group_id)
) without rowid;

create table project_right (
    project_id integer not null references project (id),
    subject_id integer not null,
    user_id integer references user_account (id),
    group_id integer references user_group (id),
    role integer not null check (role between 1 and 4),
    primary key (project_id, subject_id),
    check (subject_id = coalesce(user_id, group_id) and (user_id is null) <> (group_id is null))
) without rowid;

create table baseline (
    id integer primary key,
    project_id integer not null references project (id),
    position integer not null,
    name text not null check (length(name) between 1 and 128),
    description text not null,
    type integer not null check (type between 1 and 3),
    created integer not null,
    unique (project_id, position)
);
create unique index baseline_current on baseline (project_id) where type = 1;

-- Requirement types and their attributes.

create table requirement_type (
    id integer primary key,
    project_id integer not null references project (id),
    name text not null check (length(name) between 1 and 128),
    tag text not null check (length(tag) between 1 and 16),
    description text not null,
    revision integer not null default 1,
    unique (project_id, name)
);

create table custom_tab (
    id integer primary key,
    type_id integer not null references requirement_type (id),
    position integer not null,
    name text not null check (length(name) between 1 and 128),
    icon blob not null check (length(icon) in (0, 768)),
    unique (type_id, position)
);

-- kind: 1 boolean, 2 date, 3 float, 4 integer, 5 duration, 6 list, 7 text.
-- role: 0 on a custom tab, 1 status, 2 priority.
-- A value stands in integer_value (booleans, integers, durations), real_value
-- (floats, dates) or text_value (texts; a list's chosen positions as "0,2").
create table attribute (
    id integer primary key,
    type_id integer not null references requirement_type (id),
    tab_id integer references custom_tab (id),
    role integer not null check (role between 0 and 2),
    position integer not null,
    name text not null check (length(name) between 1 and 128),
    kind integer not null check (kind between 1 and 7),
    max_length integer not null check (max_length >= 0),
    min_integer integer not null,
    max_integer integer not null,
    min_real real not null,
    max_real real not null,
    unit_name text not null,
    max_selections integer not null check (max_selections >= 0),
    integer_value integer,
    real_value real,
    text_value text,
    unique (type_id, role, tab_id, position),
    check ((tab_id is null) = (role <> 0)),
    check (role = 0 or kind = 6)
);
create unique index attribute_role on attribute (type_id, role) where role <> 0;
create index attribute_tab on attribute (tab_id);

create table attribute_entry (
    attribute_id integer not null references attribute (id),
    position integer not null,
    text_entry text,
    number_entry integer,
    user_id integer references user_account (id),
    group_id integer references user_group (id),
    primary key (attribute_id, position)
) without rowid;

-- Requirements. A version is never changed once it is written; the texts, which
-- are long and seldom change, stand apart and are shared by versions.

create table requirement (
    id integer primary key,
    project_id integer not null references project (id),
    message_count integer not null default 0
);

create table requirement_text (
    id integer primary key,
    description text not null,
    validation text not null
);

create table requirement_version (
    id integer primary key,
    requirement_id integer not null references requirement (id),
    major integer not null,
    minor integer not null,
    type_id integer not null references requirement_type (id),
    name text not null check (length(name) between 1 and 255),
    owner_id integer references user_account (id),
    text_id integer not null references requirement_text (id),
    changed integer not null,
    changed_by integer not null references user_account (id),
    comment text not null,
    unique (requirement_id, major, minor)
);

-- An attribute without a row holds its default.
create table attribute_value (
    version_id integer not null references requirement_version (id),
    attribute_id integer not null references attribute (id),
    integer_value integer,
    real_value real,
    text_value text,
    primary key (version_id, attribute_id)
) without rowid;

create table document_reference (
    version_id integer not null references requirement_version (id),
    position integer not null,
    kind integer not null check (kind between 1 and 3),
    target text not null,
    description text not null,
    is_key integer not null check (is_key in (0, 1)),
    primary key (version_id, position)
) without rowid;
create unique index document_reference_key on document_reference (version_id) where is_key = 1;

create table responsibility (
    version_id integer not null references requirement_version (id),
    group_id integer not null references user_group (id),
    user_id integer not null references user_account (id),
    primary key (version_id, group_id, user_id)
) without rowid;

-- kind: 0 none, 1 text, 2 integer, 3 float, 4 boolean, 5 date.
create table history_change (
    version_id integer not null references requirement_version (id),
    position integer not null,
    attribute_name text not null,
    old_kind integer not null check (old_kind between 0 and 5),
    old_value any,
    new_kind integer not null check (new_kind between 0 and 5),
    new_value any,
    primary key (version_id, position)
) without rowid;

create table requirement_lock (
    requirement_id integer primary key references requirement (id),
    session_id integer not null references session (id) on delete cascade,
    user_id integer not null references user_account (id),
    expires integer not null
);
create index requirement_lock_session on requirement_lock (session_id);

-- The tree of each baseline. Siblings lie together in their order; the order key
-- leaves gaps, so that an insertion moves nobody else. A requirement type's node
-- has the baseline's number as its parent and no version.

create table tree_node (
    baseline_id integer not null references baseline (id),
    parent_id integer not null,
    order_key integer not null,
    node_id integer not null,
    type_id integer not null references requirement_type (id),
    version_id integer references requirement_version (id),
    child_count integer not null default 0 check (child_count >= 0),
    primary key (baseline_id, parent_id, order_key),
    check ((version_id is null) = (parent_id = baseline_id))
) without rowid;
create unique index tree_node_id on tree_node (baseline_id, node_id);
create index tree_node_type on tree_node (baseline_id, order_key) where version_id is null;

-- Discussions. Counts are stored, so that unread marks of a long branch cost no
-- scan of the messages.

create table message (
    id integer primary key,
    requirement_id integer not null references requirement (id),
    parent_id integer references message (id),
    subject text not null,
    body text not null,
    author_id integer not null references user_account (id),
    date integer not null
);
create index message_requirement on message (requirement_id, id);

create table message_read (
    user_id integer not null references user_account (id),
    message_id integer not null references message (id),
    primary key (user_id, message_id)
) without rowid;

create table read_count (
    user_id integer not null references user_account (id),
    requirement_id integer not null references requirement (id),
    read_messages integer not null check (read_messages >= 0),
    primary key (user_id, requirement_id)
) without rowid;

create table interest (
    user_id integer not null references user_account (id),
    requirement_id integer not null references requirement (id),
    primary key (user_id, requirement_id)
) without rowid;

-- Traces, integrations, glossaries, images.

create table integration (
    id integer primary key,
    name text not null unique check (length(name) between 1 and 255),
    library_name text not null,
    icon blob not null check (length(icon) in (0, 768))
);

create table external_object (
    id integer primary key,
    integration_id integer not null references integration (id),
    external_key text not null check (length(external_key) between 1 and 4096),
    name text not null,
    location text not null,
    icon blob not null,
    unique (integration_id, external_key)
);

create table trace (
    id integer primary key,
    from_requirement integer references requirement (id),
    from_object integer references external_object (id),
    to_requirement integer references requirement (id),
    to_object integer references external_object (id),
    suspect integer not null default 0 check (suspect in (0, 1)),
    check ((from_requirement is null) <> (from_object is null)),
    check ((to_requirement is null) <> (to_object is null)),
    check (from_requirement is not null or to_requirement is not null),
    check (from_requirement is null or to_requirement is null or from_requirement <> to_requirement)
);
create unique index trace_ends on trace (coalesce(from_requirement, from_object), coalesce(to_requirement, to_object));
create index trace_from on trace (from_requirement) where from_requirement is not null;
create index trace_to on trace (to_requirement) where to_requirement is not null;

create table glossary (
    id integer primary key,
    project_id integer not null references project (id),
    position integer not null,
    name text not null check (length(name) between 1 and 128),
    red integer not null check (red between 0 and 255),
    green integer not null check (green between 0 and 255),
    blue integer not null check (blue between 0 and 255),
    unique (project_id, position)
);

create table glossary_term (
    id integer primary key,
    glossary_id integer not null references glossary (id),
    position integer not null,
    name text not null check (length(name) between 1 and 128),
    definition text not null,
    unique (glossary_id, position)
);

create table image (
    hash text primary key check (length(hash) = 64),
    media_type text not null,
    data blob not null
);
