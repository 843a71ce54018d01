const socket = new WebSocket(`ws://${location.host}/live`);
socket.onopen = () => socket.send(JSON.stringify({token: location.hash.slice(1)}));
socket.onmessage = (event) => {
  const message = JSON.parse(event.data);
  if (message.type === "state") {
    document.body.dataset.state = message.state;
    document.getElementById("status").textContent = message.status;
  } else if (message.type === "log") {
    const log = document.getElementById("log");
    log.textContent = message.reset ? message.text : log.textContent + message.text;
  }
};
