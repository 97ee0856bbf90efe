// The engine's side of the editor, in a script world of its own: the description's
// document cannot see it, and the document's own scripts never run.
//
// call() takes one operation as JSON and gives its answer as JSON. Objects that the
// other side keeps stand in a table under a number, written {"$": number}: an even one
// that is given here, or an odd one that the other side has chosen. A call on one of the
// two numbers of the selection makes a range of it first; its value comes in
// {"$": number of the range, "value": value}.
(function () {
    'use strict';

    const TextSelection = -1;
    const ControlSelection = -2;
    const objects = new Map();
    const waiting = [];
    // What is put off until the page is done with an event.
    const afterEvent = new MessageChannel();
    const putOff = [];
    const segmenter = new Intl.Segmenter(undefined, { granularity: 'word' });
    let lastNumber = 0;
    let port = null;
    let dirty = false;
    // Counts the settings of the dirty state from outside; tells late news apart.
    let epoch = 0;
    let movePending = false;
    // Counts the changes, and up to which of them the text was told.
    let changes = 0;
    let told = 0;
    const PauseMilliseconds = 1000;
    // The files that the user has put in, as the documents name them.
    const chosen = new Set();
    // The other side holds the state of the selection.
    let selectionTold = false;
    let pointedAt = document;

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

    function post(message) {
        if (port) port.Post(JSON.stringify(message));
        else waiting.push(message);
    }

    // Timers do not run where the document's own scripts may not, tasks do.
    function changed() {
        if (!dirty) post({ dirty: true, epoch: epoch });
        dirty = true;
        const change = ++changes;
        scheduler.postTask(() => {
            if (change === changes) tellText();
        }, { delay: PauseMilliseconds });
    }

    function tellText() {
        if (told === changes) return;
        told = changes;
        post({ dirty: true, epoch: epoch, html: outerHTML(document.documentElement) });
    }

    function tellStale() {
        if (!selectionTold) return;
        selectionTold = false;
        post({ stale: true });
    }

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

    // The first node behind a place, in the order of the document.
    function nodeBehind(container, offset) {
        if (container.childNodes[offset]) return container.childNodes[offset];
        let node = container;
        while (node && !node.nextSibling) node = node.parentNode;
        return node && node.nextSibling;
    }

    // Whether the letters of the selection differ in a property of their style. Goes from
    // node to node, since to ask a range about each takes long in a long document.
    function selectionVaries(property) {
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
            const value = getComputedStyle(node.parentElement)[property];
            if (seen !== null && seen !== value) return true;
            seen = value;
        }
        return false;
    }

    // Without a value where the selection has several fonts or sizes: the engine itself
    // gives those of its first letter.
    function commandValue(name) {
        if (/^(bold|italic|underline|justify.*)$/i.test(name)) return document.queryCommandState(name);
        if (/^fontname$/i.test(name) && selectionVaries('fontFamily')) return null;
        if (/^fontsize$/i.test(name) && selectionVaries('fontSize')) return null;
        const value = document.queryCommandValue(name);
        if (value === '' || value === false || value === null) return null;
        if (/^fontsize$/i.test(name)) return Number(value);
        if (/color$/i.test(name)) return colorNumber(value);
        // Of a list of fonts the first one counts.
        return /^\s*(?:"([^"]*)"|'([^']*)'|([^,]*))/.exec(value).slice(1).join('').trim();
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

    function styleName(name) {
        return name.replace(/[a-z][A-Z]/g, (pair) => pair[0] + '-' + pair[1]).toLowerCase();
    }

    function attributeValue(element, name) {
        const value = element.getAttribute(name);
        return value !== null && /^-?\d{1,9}$/.test(value) ? Number(value) : value;
    }

    function linkAt(node) {
        return node.closest ? node.closest('a[href]') : null;
    }

    function selectionType() {
        const range = currentRange();
        if (controlIn(range)) return 'Control';
        return range.collapsed ? 'None' : 'Text';
    }

    function commandFlags(name) {
        return (document.queryCommandEnabled(name) ? 2 : 0) | (document.queryCommandState(name) ? 4 : 0);
    }

    // Keys and input commands reach an editable page only when its body has the focus.
    // A caret that is there stays where it is.
    function focusBody() {
        if (document.designMode === 'on' && document.body) document.body.focus({ preventScroll: true });
    }

    function byName(names, value) {
        return Object.fromEntries(names.map((name) => [name, value(name)]));
    }

    function bringsItsBytes(image) {
        return /^data:image\/(png|jpeg|gif|webp);base64,/i.test(image.getAttribute('src'));
    }

    // Any other file would leave this machine without its user's doing.
    function isNew(image) {
        return image.hasAttribute('new') && (bringsItsBytes(image) || chosen.has(image.getAttribute('src')));
    }

    function isStored(image) {
        const source = image.getAttribute('src');
        const name = image.getAttribute('src_original');
        return Boolean(source && name) && (source === name || source.endsWith('/' + name));
    }

    // Of pictures that came from elsewhere, those that bring their bytes along go to the
    // server. Of the others the alternative text stays: the element itself must, or the
    // user could not take the change back.
    function settlePictures() {
        let lost = 0;
        for (const image of document.images) {
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
        return element.innerHTML.startsWith('\n');
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
        try {
            catchUp(request.posted);
            if (!request.operation) return '{}';
            const made = request.on < 0 ? rangeOfSelection(request.on) : null;
            const object = made || find(request.on);
            if (request.moves.length > 0) applyMoves(object, request.moves);
            const result = operations[request.operation](object, ...request.arguments);
            const value = result === undefined ? null : result;
            return JSON.stringify({ value: made ? Object.assign(keep(made), { value: value }) : value });
        } catch (failure) {
            return JSON.stringify({ failure: failure.message });
        } finally {
            for (const number of request.release) objects.delete(number);
        }
    }

    // The engine itself leaves a caret beside an image or table that is clicked.
    document.addEventListener('mousedown', (event) => {
        const target = event.target;
        if (document.designMode !== 'on' || !/^(IMG|TABLE)$/.test(target.nodeName)) return;
        event.preventDefault();
        document.body.focus();
        const range = document.createRange();
        range.selectNode(target);
        select(range);
    }, true);

    // What the Tab key puts in is the editor's business.
    document.addEventListener('keydown', (event) => {
        if (document.designMode === 'on' && event.key === 'Tab') event.preventDefault();
    }, true);

    // Who hears of these events asks the document at once, and is to see what they did.
    afterEvent.port1.onmessage = () => post({ event: putOff.shift() });
    for (const type of ['mouseup', 'keydown'])
        document.addEventListener(type, () => {
            putOff.push(type);
            afterEvent.port2.postMessage(null);
        }, true);
    document.addEventListener('mousemove', (event) => {
        pointedAt = event.target;
        if (movePending) return;
        movePending = true;
        requestAnimationFrame(() => {
            movePending = false;
            const link = linkAt(pointedAt);
            const control = controlIn(currentRange()) !== null;
            post({ event: 'mousemove', control: control, link: link ? link.href : '' });
        });
    }, true);
    // A click on a link of an editable page only sets the caret.
    document.addEventListener('click', (event) => {
        const link = event.ctrlKey && document.designMode === 'on' && linkAt(event.target);
        if (!link) return;
        event.preventDefault();
        post({ link: link.href });
    }, true);
    document.addEventListener('input', (event) => {
        if (/^insertFrom/.test(event.inputType)) settlePictures();
        changed();
        tellStale();
    }, true);
    document.addEventListener('selectionchange', tellStale);
    window.addEventListener('blur', tellText);
    window.addEventListener('focus', (event) => {
        if (event.target === window || event.target === document) focusBody();
    });

    new QWebChannel(qt.webChannelTransport, (channel) => {
        port = channel.objects.host;
        for (const message of waiting.splice(0)) post(message);
    });

    window.quoraneCall = call;
})();
