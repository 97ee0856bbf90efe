// What the other side is told: changes, a selection that is another now, and events.

const waiting = [];
let port = null;
let dirty = false;
// Counts the settings of the dirty state from outside; tells late news apart.
let epoch = 0;
// Counts the changes, and up to which of them the text was told.
let changes = 0;
let told = 0;
const PauseMilliseconds = 1000;
// Of typing without a pause.
const LongestMilliseconds = 5000;
let toldAt = 0;
// The other side holds the state of the selection.
let selectionTold = false;
// What is put off until the page is done with an event.
const afterEvent = new MessageChannel();
const putOff = [];
let movePending = false;
let pointedAt = document;

function post(message) {
    if (port) port.Post(JSON.stringify(message));
    else waiting.push(message);
}

// Timers do not run where the document's own scripts may not, tasks do.
function changed() {
    if (!dirty) post({ dirty: true, epoch: epoch });
    dirty = true;
    if (told === changes) toldAt = performance.now();
    const change = ++changes;
    if (performance.now() - toldAt > LongestMilliseconds) tellText();
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

function linkAt(node) {
    return node.closest ? node.closest('a[href]') : null;
}

// Keys and input commands reach an editable page only when its body has the focus.
// A caret that is there stays where it is.
function focusBody() {
    if (document.designMode === 'on' && document.body) document.body.focus({ preventScroll: true });
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
