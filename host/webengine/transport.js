// Connects the bridge object with the client, in a world that the page cannot reach.
(function () {
    'use strict';

    const host = location.hostname.replace(/^\[|\]$/g, '');
    const origin = location.protocol + '//' + host + ':' + (location.port || (location.protocol === 'https:' ? 443 : 80));
    if (!@origins@.includes(origin)) {
        return;
    }
    new QWebChannel(qt.webChannelTransport, (channel) => {
        const port = channel.objects.port;
        const announce = () => document.dispatchEvent(new CustomEvent('zrclient-ready'));
        port.message.connect((text) => document.dispatchEvent(new CustomEvent('zrclient-in', {detail: text})));
        document.addEventListener('zrclient-out', (event) => port.post(String(event.detail)));
        document.addEventListener('zrclient-hello', announce);
        announce();
    });
})();
