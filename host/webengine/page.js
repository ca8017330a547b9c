// The bridge object of a page, in the page's own world. docs/web-bridge.md describes it.
(function () {
    'use strict';

    const kMaxBytes = 1024 * 1024;
    const host = location.hostname.replace(/^\[|\]$/g, '');
    const origin = location.protocol + '//' + host + ':' + (location.port || (location.protocol === 'https:' ? 443 : 80));
    if (!@origins@.includes(origin)) {
        return;
    }

    const page = crypto.getRandomValues(new Uint32Array(4)).join('-');
    const calls = new Map();
    const listeners = new Map();
    const waiting = [];
    let ready = false;
    let nextCall = 1;

    function failure(code, name) {
        const error = new Error(code + (name ? ': ' + name : ''));
        error.code = code;
        return error;
    }

    function post(message) {
        message.page = page;
        const text = JSON.stringify(message);
        if (new TextEncoder().encode(text).length > kMaxBytes) {
            throw failure('too-large', message.name);
        }
        if (ready) {
            document.dispatchEvent(new CustomEvent('zrclient-out', {detail: text}));
        } else {
            waiting.push(text);
        }
    }

    function receive(message) {
        if (message.page !== page) {
            return;
        }
        if (message.event !== undefined) {
            for (const listener of Array.from(listeners.get(message.event) || [])) {
                listener(message.params);
            }
            return;
        }
        const call = calls.get(message.call);
        calls.delete(message.call);
        if (!call) {
            return;
        }
        if (message.error) {
            call.reject(failure(message.error.code, message.error.name));
        } else {
            call.resolve(message.answer);
        }
    }

    document.addEventListener('zrclient-in', (event) => receive(JSON.parse(event.detail)));
    document.addEventListener('zrclient-ready', () => {
        if (ready) {
            return;
        }
        ready = true;
        post({});
        for (const text of waiting.splice(0)) {
            document.dispatchEvent(new CustomEvent('zrclient-out', {detail: text}));
        }
    });
    document.dispatchEvent(new CustomEvent('zrclient-hello'));

    const bridge = {
        call(name, params) {
            return new Promise((resolve, reject) => {
                const id = nextCall++;
                post({call: id, name: name, params: params === undefined ? {} : params});
                calls.set(id, {resolve: resolve, reject: reject});
            });
        },
        notify(name, params) {
            post({name: name, params: params === undefined ? {} : params});
        },
        on(event, listener) {
            if (!listeners.has(event)) {
                listeners.set(event, new Set());
            }
            listeners.get(event).add(listener);
        },
        off(event, listener) {
            (listeners.get(event) || new Set()).delete(listener);
        },
    };
    Object.defineProperty(window, 'zrclient', {value: Object.freeze(bridge)});
})();
