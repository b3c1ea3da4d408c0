#include "remote/RemotePage.h"

namespace orvane {

namespace {

// Scene names come from the presenter's documents and reach the page as
// JSON; they are inserted with textContent and createTextNode, never as
// markup.
constexpr std::string_view kPage = R"PAGE(<!DOCTYPE html>
<html lang="en">
<head>
    <meta charset="UTF-8">
    <meta name="viewport" content="width=device-width, initial-scale=1.0">
    <title>OrvaneUI Remote</title>
    <style>
        * {
            margin: 0;
            padding: 0;
            box-sizing: border-box;
        }

        body {
            font-family: -apple-system, BlinkMacSystemFont, 'Segoe UI', Roboto, sans-serif;
            background: linear-gradient(135deg, #212529 0%, #343a40 50%, #495057 100%);
            min-height: 100vh;
            padding: 20px;
            color: white;
        }

        .container {
            max-width: 900px;
            margin: 0 auto;
            background: rgba(33, 37, 41, 0.95);
            border-radius: 16px;
            padding: 24px;
            box-shadow: 0 20px 40px rgba(0, 0, 0, 0.3);
            border: 1px solid rgba(255, 255, 255, 0.1);
        }

        .header {
            display: flex;
            align-items: center;
            justify-content: center;
            gap: 12px;
            margin-bottom: 24px;
        }

        .app-icon {
            display: flex;
        }

        h1 {
            font-size: 2.2em;
            font-weight: 600;
            background: linear-gradient(135deg, #8b5cf6 0%, #a855f7 100%);
            -webkit-background-clip: text;
            -webkit-text-fill-color: transparent;
            background-clip: text;
        }

        .status {
            text-align: center;
            margin-bottom: 24px;
            padding: 12px 16px;
            border-radius: 8px;
            font-weight: 500;
            font-size: 0.9em;
        }

        .connected {
            background: rgba(34, 197, 94, 0.15);
            color: #22c55e;
            border: 1px solid rgba(34, 197, 94, 0.3);
        }

        .disconnected {
            background: rgba(239, 68, 68, 0.15);
            color: #ef4444;
            border: 1px solid rgba(239, 68, 68, 0.3);
        }

        .section-title {
            font-size: 0.85em;
            font-weight: 700;
            color: #9ca3af;
            text-transform: uppercase;
            letter-spacing: 0.5px;
            margin-bottom: 12px;
            padding-left: 4px;
        }

        .controls-section {
            margin-bottom: 24px;
        }

        .scenes-grid {
            display: grid;
            grid-template-columns: repeat(auto-fit, minmax(180px, 1fr));
            gap: 12px;
            margin-bottom: 20px;
        }

        .scene-button {
            position: relative;
            background: rgba(255, 255, 255, 0.05);
            border: 1px solid rgba(255, 255, 255, 0.1);
            border-radius: 10px;
            padding: 16px 12px;
            color: white;
            font-size: 0.95em;
            font-weight: 500;
            min-height: 60px;
            display: flex;
            align-items: center;
            justify-content: center;
            text-align: center;
            cursor: pointer;
            transition: all 0.2s ease;
        }

        .scene-button:hover {
            background: rgba(255, 255, 255, 0.1);
            border-color: rgba(139, 92, 246, 0.5);
            transform: translateY(-1px);
        }

        .scene-button.active {
            background: rgba(139, 92, 246, 0.2);
            border-color: #8b5cf6;
            color: #c4b5fd;
            box-shadow: 0 4px 12px rgba(139, 92, 246, 0.3);
        }

        .number {
            position: absolute;
            top: 8px;
            right: 10px;
            width: 24px;
            height: 24px;
            border-radius: 50%;
            background: rgba(255, 255, 255, 0.15);
            display: flex;
            align-items: center;
            justify-content: center;
            font-size: 0.75em;
            font-weight: 600;
        }

        .live-button {
            width: 100%;
            background: linear-gradient(135deg, #8b5cf6 0%, #a855f7 100%);
            border: none;
            border-radius: 10px;
            padding: 16px;
            color: white;
            font-size: 1.1em;
            font-weight: 600;
            text-transform: uppercase;
            letter-spacing: 0.5px;
            cursor: pointer;
            transition: all 0.2s ease;
        }

        .live-button:hover {
            transform: translateY(-1px);
            box-shadow: 0 8px 20px rgba(139, 92, 246, 0.4);
        }

        .live-button:active {
            transform: translateY(0);
        }

        .control-button {
            width: 100%;
            background: rgba(255, 255, 255, 0.08);
            border: 1px solid rgba(255, 255, 255, 0.15);
            border-radius: 8px;
            padding: 12px 16px;
            color: white;
            font-size: 0.95em;
            font-weight: 500;
            margin-bottom: 8px;
            cursor: pointer;
            transition: all 0.2s ease;
        }

        .control-button:hover {
            background: rgba(255, 255, 255, 0.12);
            border-color: rgba(255, 255, 255, 0.25);
            transform: translateY(-1px);
        }

        .control-button.active {
            background: rgba(251, 146, 60, 0.2);
            border-color: #fb923c;
            color: #fed7aa;
        }

        @media (max-width: 600px) {
            .scenes-grid {
                grid-template-columns: 1fr 1fr;
            }

            .header {
                flex-direction: column;
                gap: 8px;
            }

            h1 {
                font-size: 1.8em;
            }

            .container {
                padding: 16px;
            }
        }
    </style>
</head>
<body>
    <div class="container">
        <div class="header">
            <div class="app-icon">
                <svg width="32" height="32" viewBox="0 0 32 32" xmlns="http://www.w3.org/2000/svg">
                    <defs>
                        <linearGradient id="iconGradient" x1="0%" y1="0%" x2="100%" y2="100%">
                            <stop offset="0%" stop-color="#8b5cf6"/>
                            <stop offset="100%" stop-color="#ec4899"/>
                        </linearGradient>
                    </defs>
                    <rect width="32" height="32" rx="6" fill="url(#iconGradient)"/>
                    <path d="M12 10v12l8-6z" fill="white"/>
                    <rect x="22" y="12" width="2" height="8" fill="white"/>
                    <rect x="25" y="10" width="2" height="12" fill="white"/>
                </svg>
            </div>
            <h1>OrvaneUI Remote</h1>
        </div>

        <div id="status" class="status disconnected">Connecting...</div>

        <div class="controls-section">
            <div class="section-title">Scenes</div>
            <div id="scenes" class="scenes-grid"></div>
            <button id="liveButton" class="live-button">🔴 Go Live</button>
        </div>

        <div class="controls-section">
            <div class="section-title">Quick Controls</div>
            <button id="blurButton" class="control-button">🔒 Toggle Blur</button>
        </div>
    </div>

    <script>
        let currentActiveScene = null;

        async function fetchScenes() {
            const status = document.getElementById('status');
            try {
                const response = await fetch('/api/scenes');
                const data = await response.json();
                renderScenes(data.scenes);
                updateStatus(data.activeScene);
                status.className = 'status connected';
                status.textContent = '✅ Connected to OrvaneUI';
            } catch (error) {
                console.error('Failed to fetch scenes:', error);
                status.className = 'status disconnected';
                status.textContent = '❌ Connection failed';
            }
        }

        function renderScenes(scenes) {
            const container = document.getElementById('scenes');
            container.replaceChildren();
            scenes.forEach((scene, index) => {
                const button = document.createElement('button');
                button.className = 'scene-button';
                const number = document.createElement('div');
                number.className = 'number';
                number.textContent = index + 1;
                button.appendChild(number);
                button.appendChild(document.createTextNode(scene.name));
                if (scene.isActive) {
                    button.classList.add('active');
                    currentActiveScene = index;
                }
                button.addEventListener('click', () => switchScene(index));
                container.appendChild(button);
            });
        }

        function updateStatus(activeIndex) {
            document.querySelectorAll('.scene-button').forEach((button, index) => {
                button.classList.toggle('active', index === activeIndex);
            });
            currentActiveScene = activeIndex;
        }

        async function switchScene(index) {
            try {
                const response = await fetch(`/api/scene/${index}`, { method: 'POST' });
                if (response.ok) {
                    updateStatus(index);
                }
            } catch (error) {
                console.error('Failed to switch scene:', error);
            }
        }

        async function goLive() {
            try {
                const response = await fetch('/api/live', { method: 'POST' });
                if (response.ok) {
                    const button = document.getElementById('liveButton');
                    button.style.background = 'linear-gradient(135deg, #ef4444 0%, #dc2626 100%)';
                    button.textContent = '🔴 LIVE!';
                    setTimeout(() => {
                        button.style.background = 'linear-gradient(135deg, #8b5cf6 0%, #a855f7 100%)';
                        button.textContent = '🔴 Go Live';
                    }, 2000);
                }
            } catch (error) {
                console.error('Failed to go live:', error);
            }
        }

        async function toggleBlur() {
            try {
                const response = await fetch('/api/blur', { method: 'POST' });
                if (response.ok) {
                    const data = await response.json();
                    const button = document.getElementById('blurButton');
                    if (data.isEnabled) {
                        button.classList.add('active');
                        button.textContent = '🔓 Remove Blur';
                    } else {
                        button.classList.remove('active');
                        button.textContent = '🔒 Toggle Blur';
                    }
                }
            } catch (error) {
                console.error('Failed to toggle blur:', error);
            }
        }

        document.getElementById('liveButton').addEventListener('click', goLive);
        document.getElementById('blurButton').addEventListener('click', toggleBlur);

        document.addEventListener('keydown', (e) => {
            const number = parseInt(e.key);
            if (number >= 1 && number <= 9) {
                if (document.querySelectorAll('.scene-button')[number - 1]) {
                    switchScene(number - 1);
                }
            } else if (e.key.toLowerCase() === 'b') {
                toggleBlur();
            }
        });

        fetchScenes();
        setInterval(fetchScenes, 2000);
    </script>
</body>
</html>
)PAGE";

}  // namespace

std::string_view remotePageHtml() { return kPage; }

}  // namespace orvane
