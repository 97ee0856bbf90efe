// The operations of the other side, which asks for them through call().
//
// call() takes one operation as JSON and gives its answer as JSON. Objects that the
// other side keeps stand in a table under a number, written {"$": number}: an even one
// that is given here, or an odd one that the other side has chosen. A call on one of the
// two numbers of the selection makes a range of it first; its value comes in
// {"$": number of the range, "value": value}.

const objects = new Map();
let lastNumber = 0;
// The files that the user has put in, as the documents name them.
const chosen = new Set();

function keep(object) {
    lastNumber += 2;
    objects.set(lastNumber, object);
    return { $: lastNumber };
}

function keepElement(element) {
    return element ? Object.assign(keep(element), { tag: element.tagName.toUpperCase() }) : null;
}

// The document itself has no object.
function find(number) {
    if (number === 0) return null;
    if (!objects.has(number)) throw new Error('The object is gone.');
    return objects.get(number);
}

function run(command, value) {
    return document.execCommand(command, false, value === null ? undefined : String(value));
}

// Colours travel as numbers with red in the low byte.
function colorText(number) {
    const hex = (byte) => (byte & 255).toString(16).padStart(2, '0');
    return '#' + hex(number) + hex(number >> 8) + hex(number >> 16);
}

function colorNumber(text) {
    const parts = /^rgba?\((\d+), (\d+), (\d+)/.exec(text);
    return parts ? Number(parts[1]) | (Number(parts[2]) << 8) | (Number(parts[3]) << 16) : null;
}

// Without a value where the selection has several fonts or sizes: the engine itself
// gives those of its first letter.
function commandValue(name) {
    if (/^(bold|italic|underline|justify.*)$/i.test(name)) return document.queryCommandState(name);
    if (/^fontname$/i.test(name) && selectionVaries((style) => firstFont(style.fontFamily).toLowerCase())) return null;
    if (/^fontsize$/i.test(name) && selectionVaries((style) => style.fontSize)) return null;
    const value = document.queryCommandValue(name);
    if (value === '' || value === false || value === null) return null;
    if (/^fontsize$/i.test(name)) return Number(value);
    if (/color$/i.test(name)) return colorNumber(value);
    return firstFont(value);
}

// Of a list of fonts the first one counts.
function firstFont(list) {
    return /^\s*(?:"([^"]*)"|'([^']*)'|([^,]*))/.exec(list).slice(1).join('').trim();
}

function commandFlags(name) {
    return (document.queryCommandEnabled(name) ? 2 : 0) | (document.queryCommandState(name) ? 4 : 0);
}

function byName(names, value) {
    return Object.fromEntries(names.map((name) => [name, value(name)]));
}

function styleName(name) {
    return name.replace(/[a-z][A-Z]/g, (pair) => pair[0] + '-' + pair[1]).toLowerCase();
}

function attributeValue(element, name) {
    const value = element.getAttribute(name);
    return value !== null && /^-?\d{1,9}$/.test(value) ? Number(value) : value;
}

function bringsItsBytes(image) {
    return /^data:image\/(png|jpeg|gif|webp);base64,/i.test(image.getAttribute('src'));
}

// Any other file would leave this machine without its user's doing.
function isNew(image) {
    return image.hasAttribute('new') && (bringsItsBytes(image) || chosen.has(image.getAttribute('src')));
}

function isStored(image) {
    const source = image.getAttribute('src') || '';
    const name = image.getAttribute('src_original');
    return /^[0-9a-f]{64}$/.test(name) && (source === name || source.endsWith('/' + name));
}

// Of pictures that came from elsewhere, those that bring their bytes along go to the
// server. Of the others the alternative text stays: the element itself must, or the
// user could not take the change back.
function settlePictures() {
    let lost = 0;
    for (const image of document.images) {
        if (!isNew(image)) image.removeAttribute('new');
        if (!image.hasAttribute('src') || isStored(image) || isNew(image)) continue;
        if (bringsItsBytes(image)) {
            image.setAttribute('new', 'true');
            continue;
        }
        for (const name of image.getAttributeNames()) if (name !== 'alt') image.removeAttribute(name);
        ++lost;
    }
    if (lost > 0) post({ lostPictures: lost });
}

function startsWithBreak(element) {
    const first = element.firstChild;
    return first !== null && first.nodeType === Node.TEXT_NODE && first.data.startsWith('\n');
}

// Whoever reads HTML takes a line break right behind this tag for none.
function outerHTML(element) {
    if (!Array.from(element.querySelectorAll('pre')).some(startsWithBreak)) return element.outerHTML;
    const copy = element.cloneNode(true);
    for (const pre of copy.querySelectorAll('pre')) if (startsWithBreak(pre)) pre.prepend('\n');
    return copy.outerHTML;
}

const operations = {
    setDesignMode(_, mode, files) {
        for (const file of files) chosen.add(file);
        for (const image of document.images) if (!isNew(image)) image.removeAttribute('new');
        document.designMode = mode;
        document.execCommand('styleWithCSS', false, false);
        // Without a caret the first keys would go nowhere.
        if (mode === 'on' && document.getSelection().rangeCount === 0) select(currentRange());
        focusBody();
    },
    designMode: () => (document.designMode === 'on' ? 'On' : 'Off'),
    initNew() {
        const root = document.documentElement;
        for (const name of root.getAttributeNames()) root.removeAttribute(name);
        root.innerHTML = '<head></head><body></body>';
    },
    setDirty(_, value, newEpoch) {
        epoch = newEpoch;
        dirty = value;
        if (value) changed();
        else told = ++changes;
    },
    documentElement: () => keepElement(document.documentElement),
    createElement: (_, tag) => keepElement(document.createElement(tag)),
    selection() {
        selectionTold = true;
        return {
            type: selectionType(),
            values: byName(['bold', 'italic', 'underline', 'fontname', 'fontsize', 'forecolor',
                'justifyleft', 'justifycenter', 'justifyright'], commandValue),
            flags: byName(['insertOrderedList', 'insertUnorderedList'], commandFlags),
        };
    },
    rangeCommand(state, name, value) {
        select(state.range);
        const color = /color$/i.test(name) && typeof value === 'number';
        const done = run(name, color ? colorText(value) : value);
        state.range = currentRange().cloneRange();
        return done;
    },
    rangeValue(state, name) {
        const selected = currentRange().cloneRange();
        select(state.range);
        const value = commandValue(name);
        select(selected);
        return value;
    },
    rangeText: (state) => state.range.toString(),
    rangeParent(state) {
        const node = state.range.commonAncestorContainer;
        return keepElement(node.nodeType === Node.ELEMENT_NODE ? node : node.parentElement);
    },
    rangeControl: (state) => keepElement(controlIn(state.range)),
    rangePaste(state, html, files) {
        for (const file of files) chosen.add(file);
        select(state.range);
        if (!run('insertHTML', html)) throw new Error('The document cannot be changed.');
        state.range = currentRange().cloneRange();
    },
    command(_, name) {
        return run(name, null);
    },
    outerHTML: outerHTML,
    attribute: (element, name) => attributeValue(element, name),
    setAttribute(element, name, value) {
        element.setAttribute(name, value === null ? '' : String(value));
    },
    setStyle(element, name, value) {
        element.style.setProperty(styleName(name), value === null ? '' : String(value));
    },
    children: (element) => Array.from(element.children, keepElement),
    insertRow: (table, index) => table.insertRow(index),
    insertCell: (row, index) => row.insertCell(index),
};

// Does what the other side did not wait for. A failure stops none of the rest, but
// fails the call that comes after it.
function catchUp(posted) {
    let failed = null;
    for (const [operation, on, values, made] of posted) {
        try {
            const result = operations[operation](find(on), ...values);
            if (made) objects.set(made, result);
        } catch (failure) {
            failed = failed || failure;
        }
    }
    if (failed) throw failed;
}

function call(request) {
    let undo = () => {};
    try {
        catchUp(request.posted);
        if (!request.operation) return '{}';
        const made = request.on < 0 ? rangeOfSelection(request.on) : null;
        const object = made || find(request.on);
        if (request.moves.length > 0) {
            // A failed call is made again with its moves.
            const before = Object.assign({}, object, { range: object.range.cloneRange() });
            undo = () => Object.assign(object, before);
            applyMoves(object, request.moves);
        }
        const result = operations[request.operation](object, ...request.arguments);
        const value = result === undefined ? null : result;
        return JSON.stringify({ value: made ? Object.assign(keep(made), { value: value }) : value });
    } catch (failure) {
        undo();
        return JSON.stringify({ failure: failure.message });
    } finally {
        for (const number of request.release) objects.delete(number);
    }
}
