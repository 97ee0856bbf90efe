// Ranges of the document: the selection, words, and places under a point.

const TextSelection = -1;
const ControlSelection = -2;
const segmenter = new Intl.Segmenter(undefined, { granularity: 'word' });

function currentRange() {
    const selection = document.getSelection();
    if (selection.rangeCount > 0) return selection.getRangeAt(0);
    const range = document.createRange();
    range.selectNodeContents(document.body || document.documentElement);
    range.collapse(true);
    return range;
}

// A control is selected when the selection is one image or table and nothing else.
function controlIn(range) {
    if (range.startContainer !== range.endContainer || range.endOffset - range.startOffset !== 1) return null;
    const node = range.startContainer.childNodes[range.startOffset];
    return node && /^(IMG|TABLE)$/.test(node.nodeName) ? node : null;
}

function selectionType() {
    const range = currentRange();
    if (controlIn(range)) return 'Control';
    return range.collapsed ? 'None' : 'Text';
}

// The other side has told text and control apart by what it knew before.
function rangeOfSelection(number) {
    const range = currentRange().cloneRange();
    const kind = controlIn(range) ? ControlSelection : TextSelection;
    if (kind !== number) throw new Error('The selection has changed.');
    return { range: range, hit: true };
}

// Setting a selection drops what is chosen for the next letter, so a range that is
// selected already stays untouched.
function select(range) {
    const selection = document.getSelection();
    const old = selection.rangeCount > 0 ? selection.getRangeAt(0) : null;
    if (old && range.startContainer === old.startContainer && range.startOffset === old.startOffset &&
        range.endContainer === old.endContainer && range.endOffset === old.endOffset) return;
    selection.removeAllRanges();
    selection.addRange(range);
}

// The first node behind a place, in the order of the document.
function nodeBehind(container, offset) {
    if (container.childNodes[offset]) return container.childNodes[offset];
    let node = container;
    while (node && !node.nextSibling) node = node.parentNode;
    return node && node.nextSibling;
}

// Whether the letters of the selection differ in what a function takes from their style.
// Goes from node to node, since to ask a range about each takes long in a long document.
function selectionVaries(taken) {
    const range = currentRange();
    const start = range.startContainer;
    const end = nodeBehind(range.endContainer, range.endOffset);
    const walker = document.createTreeWalker(document);
    let node = start.nodeType === Node.TEXT_NODE ? start : nodeBehind(start, range.startOffset);
    let seen = null;
    if (node) walker.currentNode = node;
    for (; node && node !== end; node = walker.nextNode()) {
        if (node.nodeType !== Node.TEXT_NODE) continue;
        const from = node === start ? range.startOffset : 0;
        const to = node === range.endContainer ? range.endOffset : node.data.length;
        if (!/\S/.test(node.data.slice(from, to))) continue;
        const value = taken(getComputedStyle(node.parentElement));
        if (seen !== null && seen !== value) return true;
        seen = value;
    }
    return false;
}

function blockOf(node) {
    let element = node.nodeType === Node.ELEMENT_NODE ? node : node.parentElement;
    while (element.parentElement && getComputedStyle(element).display.startsWith('inline'))
        element = element.parentElement;
    return element;
}

// The pieces of text from a place to the next blank or the edge of its line, in the
// order of the text. A longer stretch without a blank is no word of anybody's.
function stretch(container, offset, backwards) {
    const line = blockOf(container);
    const walker = document.createTreeWalker(line, NodeFilter.SHOW_TEXT | NodeFilter.SHOW_ELEMENT);
    const step = backwards ? -1 : 1;
    const pieces = [];
    let room = 500;
    let node = container;
    walker.currentNode = container;
    for (let at = offset; node; at = backwards && node ? node.data.length : 0) {
        let edge = at;
        let closed = false;
        while (!closed && (backwards ? edge > 0 : edge < node.data.length)) {
            closed = /\s/.test(node.data[backwards ? edge - 1 : edge]) || --room === 0;
            edge += step;
        }
        const piece = { node: node, from: Math.min(at, edge), to: Math.max(at, edge) };
        pieces.splice(backwards ? 0 : pieces.length, 0, piece);
        if (closed) break;
        node = textBeside(walker, line, backwards);
    }
    return pieces;
}

// Empty when something else than inline mark-up lies between.
function textBeside(walker, line, backwards) {
    for (;;) {
        const node = backwards ? walker.previousNode() : walker.nextNode();
        if (!node || /^(BR|HR|IMG)$/.test(node.nodeName) || blockOf(node) !== line) return null;
        if (node.nodeType === Node.TEXT_NODE) return node;
    }
}

// The text around a place and the place in it. Empty for a place that is not in a
// text.
function textAround(container, offset) {
    if (container.nodeType !== Node.TEXT_NODE) return null;
    const pieces = stretch(container, offset, true);
    const place = pieces.reduce((length, piece) => length + piece.to - piece.from, 0);
    pieces.push(...stretch(container, offset, false));
    let text = '';
    for (const piece of pieces) {
        piece.start = text.length;
        text += piece.node.data.slice(piece.from, piece.to);
    }
    return { pieces: pieces, text: text, place: place };
}

function placeIn(around, position) {
    let found = around.pieces[0];
    for (const candidate of around.pieces) if (candidate.start <= position) found = candidate;
    return [found.node, Math.min(found.from + position - found.start, found.to)];
}

// The next boundary of a word in a direction. A place at the start of a word counts
// as inside it, since it is where a pointer on its first letter leads.
function wordBoundary(around, backwards) {
    let before = 0;
    for (const part of segmenter.segment(around.text)) {
        const end = part.index + part.segment.length;
        const inside = part.index <= around.place && around.place < end;
        const closing = around.place === end && part.isWordLike;
        if (inside && !part.isWordLike && around.place === part.index && before < part.index) continue;
        if (inside || closing) return backwards ? part.index : end;
        before = part.index;
    }
    return around.place;
}

function moveEdge(state, edge, unit, count) {
    if (unit !== 'word') throw new Error('Ranges move by words only.');
    if (!state.hit) return;
    const range = state.range;
    for (let step = Math.abs(count); step > 0; --step) {
        const around = edge === 'start' ? textAround(range.startContainer, range.startOffset)
                                        : textAround(range.endContainer, range.endOffset);
        if (!around) return;
        const place = placeIn(around, wordBoundary(around, count < 0));
        if (edge === 'start') range.setStart(...place);
        else range.setEnd(...place);
    }
}

// Whether the point lies on a letter beside the caret, and not in the empty space
// from which the caret only is the nearest place.
function isOnText(caret, x, y) {
    const node = caret.startContainer;
    if (node.nodeType !== Node.TEXT_NODE) return false;
    const letter = document.createRange();
    for (const start of [caret.startOffset - 1, caret.startOffset]) {
        if (start < 0 || start >= node.data.length) continue;
        letter.setStart(node, start);
        letter.setEnd(node, start + 1);
        for (const box of letter.getClientRects())
            if (x >= box.left && x <= box.right && y >= box.top && y <= box.bottom) return true;
    }
    return false;
}

function applyMoves(state, moves) {
    for (const [kind, ...rest] of moves) {
        if (kind === 'point') {
            const caret = document.caretRangeFromPoint(...rest);
            state.hit = caret !== null && isOnText(caret, ...rest);
            state.range = caret || currentRange().cloneRange();
            if (!state.hit) state.range.collapse(true);
        } else if (kind === 'collapse') {
            state.range.collapse(rest[0]);
        } else {
            moveEdge(state, kind, ...rest);
        }
    }
}
