var re,Sa,$l,Fn,Pl,so,Ta,oo,Ea,Dl,Al,Td,wr=Symbol.for("pv"),ao={},uo=[],Ed=/^m(i|n|o|s|text|space)$/,Ll=Array.isArray,Nl=uo.
slice,li=Object.assign;function oi(e){e&&e.parentNode&&e.remove()}function Ma(e,t,n){var i,r,l,a={},c=arguments.length;for(l in t)
l=="key"?i=t[l]:l=="ref"&&typeof e!="function"?r=t[l]:a[l]=t[l];return c>2&&(a.children=c>3?Nl.call(arguments,2):n),br(e,
a,i,r,null)}function br(e,t,n,i,r){var l={type:e,props:t,key:n,ref:i,__k:null,__:null,__b:0,__e:null,__c:null,constructor:wr,__v:r||
++Sa,__i:-1,__u:0};return!r&&re.vnode&&re.vnode(l),l}function de(e){return e.children}function Bi(e,t){this.props=e,this.context=t,this.__g=0}function zn(e,t){if(t==null)return e.
__&&zn(e.__,e.__i+1);for(var n;t<e.__k.length;t++)if((n=e.__k[t])&&n.__e)return n.__e;return typeof e.type!="function"||
e.props.__P?null:zn(e)}function Md(e){var t,n=e.__v,i=n.__e,r=[],l=[],a=e.__P;a&&((t=li({constructor:wr},n)).__v=n.__v+1,
re.vnode&&re.vnode(t),Rl(a,t,n,e.__n,a.namespaceURI,32&n.__u?[i]:null,r,i||zn(n),32&n.__u,l),t.__v=n.__v,t.__.__k[t.__i]=
t,La(r,t,l),n.__=n.__e=null,t.__e!=i&&Ca(t))}function Ca(e){if((e=e.__)&&e.__c&&!e.props.__P)return e.__e=null,e.__k.some(
function(t){return t&&(e.__e=t.__e)}),Ca(e)}function xa(e){(8&e.__g||(e.__g|=8,Fn.push(e),so++))&&Pl==re.debounceRendering||
((Pl=re.debounceRendering)||queueMicrotask)(Pa)}function Pa(){try{for(var e,t=1;Fn.length;)Fn.length>t&&Fn.sort(Ta),e=Fn.
shift(),t=Fn.length,8&e.__g&&Md(e)}finally{(so=Fn.length)&&(Pl||queueMicrotask)(Pa)}}function Aa(e,t,n,i,r,l,a,c,d,m,h){
var v,w,_,S,E,M,A=i.__k||uo,y=t.length;for(d=Cd(n,t,A,d,y),v=0;v<y;v++)(_=n.__k[v])!=null&&(w=~_.__i&&A[_.__i]||ao,_.__i=
v,M=Rl(e,_,w,r,l,a,c,d,m,h),S=_.__e,(w.ref!=_.ref||8&w.__u)&&(w.ref&&Ol(w.ref,null,_,w),_.ref&&h.push(_.ref,_.__c||S,_)),
E=E||S,4&_.__u?(d=$a(_,d,e,!w.__v),w.__e&&(w.__e=null)):typeof _.type=="function"&&M!==void 0?d=M:S&&(d=S.nextSibling),_.
__u&=-21);return n.__e=E,d}function Cd(e,t,n,i,r){var l,a,c,d,m,h,v,w,_,S=n.length,E=S,M=0,A=0,y=e.__k=Array(r);for(l=0;l<
r;l++)(a=t[l])!=null&&typeof a!="boolean"&&typeof a!="function"?(typeof a!="object"||a.constructor===String?a=y[l]=br(null,
a):Ll(a)?a=y[l]=br(de,{children:a}):a.constructor===wr&&a.__b?a=y[l]=br(a.type,a.props,a.key,a.ref,a.__v):y[l]=a,d=l+M,a.
__=e,a.__b=e.__b+1,c=null,~(m=a.__i=Pd(a,n,d,E))&&(E--,(c=n[m])&&(c.__u|=2)),c&&c.__v?(a.__u|=16,m==d-1?M--:m==d+1?M++:m!=
d&&(m>d?M--:M++,A=1)):(~m||(r>S?M--:r<S&&M++),typeof a.type!="function"&&(a.__u|=4))):y[l]=null;if(A){for(h=[],v=[],l=0;l<
r;l++)if((a=y[l])&&16&a.__u){for(M=0,w=h.length;M<w;)h[_=M+w>>1]<a.__i?M=_+1:w=_;h[M]=a.__i,v[l]=M+1}for(M=h.length;l--;)
v[l]&&(v[l]==M?M--:y[l].__u|=4)}if(E)for(l=0;l<S;l++)!(c=n[l])||2&c.__u||(c.__e==i&&(i=zn(c)),Il(c,c));return i}function $a(e,t,n,i){
var r,l,a,c;if(typeof e.type=="function"){if(e.props.__P)return t;if(r=e.__k)for(l=0;l<r.length;l++)r[l]&&(r[l].__=e,t=$a(
r[l],t,n,!1));return t}for(t&&!t.parentNode&&(t=zn(e))&&!t.parentNode&&(t=null),a=e.__e,c=t;c&&c.nodeType==8;)c=c.nextSibling;
for(a!=c&&(!i&&n.moveBefore&&a.parentNode?n.moveBefore(a,t):n.insertBefore(a,t||null)),t=a;(t=t&&t.nextSibling)&&t.nodeType==
8&&!t.data.startsWith("$s"););return t}function Pd(e,t,n,i){var r,l=e.key,a=e.type,c=t[n],d=c&&!(2&c.__u);if(c===null&&l==null||d&&l==c.key&&a==c.type)return n;
if(i>(d?1:0)){for(r=n-1;r>=0;r--)if((c=t[r])&&!(2&c.__u)&&l==c.key&&a==c.type)return r;for(r=n+1;r<t.length;r++)if((c=t[r])&&
!(2&c.__u)&&l==c.key&&a==c.type)return r}return-1}function ka(e,t,n){n==null&&(n=""),t[0]=="-"?e.setProperty(t,n):e[t]=n}
function ro(e,t,n,i,r){var l,a;if(t=="style")if(typeof n=="string")e.style.cssText=n;else{if(typeof i=="string"&&(e.style.
cssText=i=""),i)for(t in i)n&&t in n||ka(e.style,t);if(n)for(t in n)i&&n[t]==i[t]||ka(e.style,t,n[t])}else if(t[0]=="o"&&
t[1]=="n")typeof n!="function"&&(n=null),typeof i!="function"&&(i=null),(e.__e||(e.__e={}))[t]=n,n&&i||(a=Al[t]||(Al[t]=
Ad(t)),(e.__a||(e.__a={}))[t]=Dl,l=t!=(t=t.replace(Ea,"$1")),(t=t.slice(2))[0]<"a"&&(t=t.toLowerCase()),n?e.addEventListener(
t,a,l):e.removeEventListener(t,a,l));else{if(r=="http://www.w3.org/2000/svg")t=t.replace(/xlink(H|:h)/,"h").replace(/sName$/,
"s");else if(t!="width"&&t!="height"&&t!="href"&&t!="list"&&t!="form"&&t!="tabIndex"&&t!="download"&&t!="rowSpan"&&t!="c\
olSpan"&&t!="role"&&t!="popover"&&t in e)try{return void(e[t]=n??"")}catch{}if(typeof n=="function")return;n==null||n===
!1&&t[4]!="-"?e.removeAttribute(t):e.setAttribute(t,t=="popover"&&n==1?"":n)}}function Ad(e){return function(t){var n=this.
__e;if(n){if(n=n[e],t[oo]==null)t[oo]=Dl++;else if(t[oo]<this.__a[e])return;return n(re.event?re.event(t):t)}}}function Rl(e,t,n,i,r,l,a,c,d,m){
var h,v,w,_,S,E,M,A,y,$,k,Q,O,J,W,X,q,P,B=t.type;if(t.constructor!==wr)return null;128&n.__u&&(d=32&n.__u,h=n.__c.__z)&&
(t.__u|=d,v=l=[],h.nodeType==8?c=lo(h,l):l.push(h),c=l[0]||c),(h=re.__b)&&h(t);e:if(typeof B=="function"){w=a.length;try{
if(A=t.props,y=(h=B.prototype)&&h.render,$=(h=B.contextType)&&i[h.__c],k=h?$?$.props.value:h.__:i,(_=n.__c)?(t.__c=_,2&_.
__g&&(_.__g|=1)):(y?t.__c=_=new B(A,k):(t.__c=_=new Bi(A,k),_.constructor=B,_.render=Dd),$&&$.sub(_),_.state||(_.state={}),
_.__n=i,_.__g|=8,_.__h=[],_.__k=[]),y&&(_.__s||(_.__s=_.state),B.getDerivedStateFromProps&&(_.__s==_.state&&(_.__s=li({},
_.__s)),li(_.__s,B.getDerivedStateFromProps(A,_.__s)))),S=_.props,E=_.state,_.__v=t,n.__c){if(A!==S&&y&&!B.getDerivedStateFromProps&&
_.componentWillReceiveProps&&_.componentWillReceiveProps(A,k),t.__v==n.__v&&!(8&_.__g)||!(4&_.__g)&&_.shouldComponentUpdate&&
_.shouldComponentUpdate(A,_.__s,k)===!1){t.__v!=n.__v&&(_.props=A,_.state=_.__s,_.__g&=-9),t.__e=n.__e,t.__k=n.__k,t.__k.
some(function(L){L&&(L.__=t)}),uo.push.apply(_.__h,_.__k),_.__k=[],_.__h.length&&a.push(_),c=zn(n);break e}_.componentWillUpdate&&
_.componentWillUpdate(A,_.__s,k),y&&_.componentDidUpdate&&_.__h.push(function(){_.componentDidUpdate(S,E,M)})}else y&&!B.
getDerivedStateFromProps&&_.componentWillMount&&_.componentWillMount(),y&&_.componentDidMount&&_.__h.push(_.componentDidMount);
_.context=k,_.props=A,_.__P=e,_.__g&=-5,Q=re.__r,O=y?25:0;do _.__g&=-9,Q&&Q(t),h=_.render(_.props,_.state=_.__s,_.context);while(8&
_.__g&&++O<25);y&&(uo.push.apply(_.__h,_.__k),_.__k=[]),_.state=_.__s,_.getChildContext&&(i=li({},i,_.getChildContext())),
y&&n.__c&&_.getSnapshotBeforeUpdate&&(M=_.getSnapshotBeforeUpdate(S,E)),J=h&&h.type===de&&h.key==null?h.props.children:h,
A.__P&&(h=c,r=(e=A.__P).namespaceURI,d=l=null,n.props&&n.props.__P!=e&&(n.__k.some(function(L){L&&Il(L,L)}),n.__k=null),
c=n.__k?zn(n,0):null),c=Aa(e,Ll(J)?J:[J],t,n,i,r,l,a,c,d,m),A.__P&&(t.__e=null,c=h),t.__u&=-161,v&&v.some(oi),_.__h.length&&
a.push(_),1&_.__g&&(_.__g&=-4)}catch(L){if(a.length=w,t.__v=null,d||l)if(L&&L.then){if(t.__u|=128|d,l){for(~(q=l.indexOf(
c||void 0))||(q=l.length);(P=l[q-1])&&P.nodeType==8;)q--;for(;q<l.length;q++)if(P=l[q])if(l[q]=null,W){if(P==X)break}else{
if(P.nodeType!=8)break;P.data.startsWith("$s")&&(X=lo(W=P))}}if(!W){for(;c&&c.nodeType==8&&c.nextSibling;)c=c.nextSibling;
W=c}(h=lo(W=t.__c.__z||(t.__c.__z=W)))?(t.__e=W,c=h):t.__e=c,c=c&&c.nextSibling}else l&&l.some(oi);else t.__e=n.__e;t.__k||
(t.__k=n.__k||[]),L&&L.then||Da(t),re.__e(L,t,n)}}else c=t.__e=$d(n.__e,t,n,i,r,l,a,d,m,e);return(h=re.diffed)&&h(t),c}function lo(e,t){
if(e&&e.nodeType==8&&e.data.startsWith("$s"))for(var n=1;e=e.nextSibling;){if(e.nodeType==8){if(e.data.startsWith("$s"))
n++;else if(e.data.startsWith("/$s")&&!--n)return e}t&&t.push(e)}}function Da(e){e&&(e.__c&&(e.__c.__g|=4),e.__k&&e.__k.
some(Da))}function La(e,t,n){for(var i=0;i<n.length;)Ol(n[i++],n[i++],n[i++]);re.__c&&re.__c(t,e),e.some(function(r){try{
e=r.__h,r.__h=[],e.some(function(l){l.call(r)})}catch(l){re.__e(l,r.__v)}})}function $d(e,t,n,i,r,l,a,c,d,m){var h,v,w,_,
S,E,M,A,y=n.props||ao,$=t.props,k=t.type;if(k=="svg"?r="http://www.w3.org/2000/svg":k=="math"?r="http://www.w3.org/1998/\
Math/MathML":r||(r="http://www.w3.org/1999/xhtml"),l){for(h=0;h<l.length;h++)if((S=l[h])&&(k?S.localName==k:S.nodeType==
3)){e=S,l[h]=null;break}}if(!e){if(A=m.ownerDocument||document,!k)return A.createTextNode($);e=A.createElementNS(r,k,$.is?
$:m),c&&(re.__m&&re.__m(t,l),c=!1),l=null}if(k){if(m=k=="template"&&e.content||e,l=k=="textarea"&&$.defaultValue!=null?null:
l&&Nl.call(m.childNodes),!c&&l)for(y={},h=0;h<e.attributes.length;h++)y[(S=e.attributes[h]).name]=S.value;for(h in y)S=y[h],
h=="dangerouslySetInnerHTML"?w=S:h=="children"||h in $||h=="value"&&"defaultValue"in $||h=="checked"&&"defaultChecked"in
$||ro(e,h,null,S,r);for(h in $)S=$[h],h=="children"?_=S:h=="dangerouslySetInnerHTML"?v=S:h=="value"?E=S:h=="checked"?M=S:
c&&typeof S!="function"||y[h]===S||ro(e,h,S,y[h],r);v?(c||w&&(v.__html==w.__html||v.__html==e.innerHTML)||(e.innerHTML=v.
__html),t.__k=[]):(w&&(e.textContent=""),(k=="foreignObject"||r=="http://www.w3.org/1998/Math/MathML"&&Ed.test(k))&&(r="\
http://www.w3.org/1999/xhtml"),Aa(m,Ll(_)?_:[_],t,n,i,r,l,a,l?l[0]:n.__k&&zn(n,0),c,d),l&&l.some(oi)),c&&k!="textarea"||
(h="value",k=="progress"&&E==null?e.removeAttribute(h):E==null||E===e[h]&&(k!="progress"||E)||ro(e,h,E,y[h],r),h="checke\
d",M!=null&&M!=e[h]&&ro(e,h,M,y[h],r))}else y===$||c&&e.data==$||(e.data=$);return e}function Ol(e,t,n,i){try{typeof e==
"function"?t?t.__x=e(t)||1:i&&(i=i.__c||i.__e)&&(t=i.__x)&&(i.__x=null,typeof t=="function"?t():e(null)):e.current=t}catch(r){
re.__e(r,n)}}function Il(e,t,n){var i,r,l,a;if(re.unmount&&re.unmount(e),!(i=e.ref)||i.current&&i.current!=e.__e||Ol(i,null,
t,e),i=e.__c){if(i.componentWillUnmount)try{i.componentWillUnmount()}catch(c){re.__e(c,t)}i.__P=i.__n=null}if(i=e.__k)for(a=
0;a<i.length;a++)i[a]&&Il(i[a],t,typeof e.type!="function"||n&&!e.props.__P);!n&&(i=e.__c)&&(i=i.__z)&&(r=lo(i,l=[]))&&(i==
e.__e&&l.some(oi),oi(r),oi(i)),n||oi(e.__e),e.__e=e.__c=e.__=null}function Dd(e,t,n){return this.constructor(e,n)}function Na(e,t){
var n,i,r,l;re.__&&re.__(e,t),t.nodeType==9&&(t=t.documentElement),i=(n=e&&32&e.__u)?null:t.__k,t.__k=br(de,{children:[e]}),
r=[],l=[],Rl(t,t.__k,i||ao,ao,t.namespaceURI,i?null:t.firstChild?Nl.call(t.childNodes):null,r,i?i.__e:t.firstChild,n,l),
La(r,t.__k,l),t.__k.props.children=null}re={__e:function(e,t,n,i){for(var r,l,a;t=t.__;)if((r=t.__c)&&!(1&r.__g)){r.__g|=4;try{if((a=(l=r.constructor)&&l.getDerivedStateFromError)&&
r.setState(l.getDerivedStateFromError(e)),r.componentDidCatch&&(r.componentDidCatch(e,i||{}),a=1),a&&8&r.__g)return void(r.
__g|=2)}catch(c){e=c}}throw so=0,e}},Sa=0,$l=function(e){return e!=null&&e.constructor===wr},Bi.prototype.setState=function(e,t){
var n=this.__s;n&&n!=this.state||(n=this.__s=li({},this.state)),typeof e=="function"&&(e=e(li({},n),this.props)),e&&(li(
n,e),this.__v&&(t&&this.__k.push(t),xa(this)))},Bi.prototype.forceUpdate=function(e){this.__v&&(this.__g|=4,e&&this.__h.
push(e),xa(this))},Bi.prototype.render=de,Fn=[],so=0,Ta=function(e,t){return e.__v.__b-t.__v.__b},oo=Symbol(),Ea=/(PointerCapture)$|Capture$/i,
Dl=0,Al={},Td=0;var si,Ie,Fl,Ra,zl=Object.is,co=0,Ba=[],Hl=[],Oe=re,Oa=Oe.__b,Ia=Oe.__r,Fa=Oe.diffed,za=Oe.__c,Ha=Oe.unmount,Va=Oe.__;function xr(e,t){
Oe.__h&&Oe.__h(Ie,e,co||t),co=0;var n=Ie.__H||(Ie.__H={__:[],__h:[]});return e>=n.__.length&&n.__.push({}),n.__[e]}function It(e){
return co=1,Ld(ja,e)}function Ld(e,t,n){var i=xr(si++,2);if(i.t=e,!i.__c&&(i.__=[n?n(t):ja(void 0,t),function(l){var a=(i.
__N||i.__)[0],c=i.t(a,l);zl(a,c)||(i.__N=[c,i.__[1]],i.__c.setState({}))}],i.__c=Ie,!Ie.__f)){Ie.__f=!0;var r=Ie.shouldComponentUpdate;
Ie.shouldComponentUpdate=function(l,a,c){var d=this.__H;if(!d)return!0;var m=!1,h=this.props!=l;if(d.__.some(function(w){
w.__N&&(m=!0,zl(w.__[0],w.__N[0])||(h=!0))}),r){var v=r.call(this,l,a,c);return m?v||h:v}return!m||h}}return i.__}function ke(e,t){
var n=xr(si++,3);!Oe.__s&&ql(n.__H,t)&&(n.__P=!0,n.__=e,n.u=t,Ie.__H.__h.push(n))}function kr(e,t){var n=xr(si++,4);!Oe.
__s&&ql(n.__H,t)&&(n.__P=!1,n.__=e,n.u=t,Ie.__h.push(n))}function Re(e){return co=5,fo(function(){return{current:e}},[])}function fo(e,t){var n=xr(si++,7);return ql(n.__H,t)&&(n.__=e(),n.__H=t),n.__}function Ua(){var e=xr(si++,11);if(!e.__){for(var t=Ie.__v;!t.__m&&t.__;)t=t.__;var n=t.__m||(t.__m=[0,0]);e.__="P"+n[0]+
"-"+n[1]++}return e.__}function Nd(){var e;do{for(;e=Hl.shift();)try{yr(e)}catch(n){Oe.__e(n,{__:(e=e.__P)&&e.__v})}for(;e=
Ba.shift();){var t=e.__H;if(e.__P&&t)try{t.__h.some(yr),t.__h.some(Vl),t.__h=[]}catch(n){t.__h=[],Oe.__e(n,e.__v)}}}while(Hl.
length)}Oe.__b=function(e){Ie=null,Oa&&Oa(e)},Oe.__=function(e,t){e&&t.__k&&t.__k.__m&&(e.__m=t.__k.__m),Va&&Va(e,t)},Oe.
__r=function(e){Ia&&Ia(e),si=0;var t=(Ie=e.__c).__H;t&&(Fl==Ie?Ie.__h=[]:(t.__h.some(yr),t.__h.some(Vl),si=0),t.__h=[],t.
__.some(function(n){n.__N&&(n.__=n.__N),n.u=n.__N=void 0})),Fl=Ie},Oe.diffed=function(e){Fa&&Fa(e);var t=e.__c;t&&t.__H&&
(t.__H.__h.length&&Wa(Ba.push(t)),t.__H.__.some(function(n){n.u&&(n.__H=n.u)})),Fl=Ie=null},Oe.__c=function(e,t){t.some(
function(n){try{n.__h.some(yr),n.__h=n.__h.filter(function(i){return!i.__||Vl(i)})}catch(i){n.__h=[function(){throw i}]}}),
za&&za(e,t)},Oe.unmount=function(e){Ha&&Ha(e);var t,n,i=e.__c;i&&i.__H&&(i.__H.__.some(function(r){try{if(r.__P&&r.__c){
if(n===void 0){for(n=e.__;n&&(!n.__c||!n.__c.__P);)n=n.__;n=n&&n.__c}r.__P=n,Wa(Hl.push(r))}else yr(r)}catch(l){t=l}}),i.
__H=void 0,t&&Oe.__e(t,i.__v))};var qa=typeof requestAnimationFrame=="function";function Rd(e){var t,n=function(){clearTimeout(
i),qa&&cancelAnimationFrame(t),setTimeout(e)},i=setTimeout(n,35);qa&&(t=requestAnimationFrame(n))}function Wa(e){e!=1&&Ra==
Oe.requestAnimationFrame||((Ra=Oe.requestAnimationFrame)||Rd)(Nd)}function yr(e){var t=Ie,n=e.__c;typeof n=="function"&&
(e.__c=void 0,n()),Ie=t}function Vl(e){var t=Ie;e.__c=e.__(),Ie=t}function ql(e,t){return!e||e.length!=t.length||t.some(
function(n,i){return!zl(n,e[i])})}function ja(e,t){return typeof t=="function"?t(e):t}var Od=Symbol.for("preact-signals");function go(){if(wn>1)wn--;else{var e,t=!1;for((function(){var r=mo;for(mo=void 0;r!==
void 0;){var l=r.S;if(l.v===r.v)for(var a=l.t;a!==void 0;a=a.x)a.i===r.i&&(a.i=l.i);r=r.o}})();Tr!==void 0;){var n=Tr;for(Tr=
void 0,po++;n!==void 0;){var i=n.u;if(n.u=void 0,n.f&=-3,!(8&n.f)&&Ga(n))try{n.c()}catch(r){t||(e=r,t=!0)}n=i}}if(po=0,wn--,
t)throw e}}function Bl(e){if(wn>0)return e();Wl=++Id,wn++;try{return e()}finally{go()}}var Sr,Ce=void 0;function yt(e){var t=Ce,
n=Sr;Ce=void 0,Sr=void 0;try{return e()}finally{Ce=t,Sr=n}}var Tr=void 0,wn=0,po=0,Id=0,Wl=0,mo=void 0,ho=0;function Ka(e){
if(Ce!==void 0){var t=e.n;if(t===void 0||t.t!==Ce)return t={i:0,S:e,p:Ce.s,n:void 0,t:Ce,e:void 0,x:void 0,r:t},Ce.s!==void 0&&
(Ce.s.n=t),Ce.s=t,e.n=t,32&Ce.f&&e.S(t),t;if(t.i===-1)return t.i=0,t.n!==void 0&&(t.n.p=t.p,t.p!==void 0&&(t.p.n=t.n),t.
p=Ce.s,t.n=void 0,Ce.s.n=t,Ce.s=t),t}}function Be(e,t){this.v=e,this.i=0,this.n=void 0,this.t=void 0,this.l=0,this.W=t?.
watched,this.Z=t?.unwatched,this.name=t?.name}Be.prototype.brand=Od;Be.prototype.h=function(){return!0};Be.prototype.S=function(e){
var t=this,n=this.t;n!==e&&e.e===void 0&&(e.x=n,this.t=e,n!==void 0?n.e=e:yt(function(){var i;(i=t.W)==null||i.call(t)}))};
Be.prototype.U=function(e){var t=this;if(this.t!==void 0){var n=e.e,i=e.x;n!==void 0&&(n.x=i,e.e=void 0),i!==void 0&&(i.
e=n,e.x=void 0),e===this.t&&(this.t=i,i===void 0&&yt(function(){var r;(r=t.Z)==null||r.call(t)}))}};Be.prototype.subscribe=
function(e){var t=this;return $e(function(){var n=t.value;yt(function(){return e(n)})},{name:"sub"})};Be.prototype.valueOf=
function(){return this.value};Be.prototype.toString=function(){return this.value+""};Be.prototype.toJSON=function(){return this.
value};Be.prototype.peek=function(){var e=this;return yt(function(){return e.value})};Object.defineProperty(Be.prototype,
"value",{get:function(){var e=Ka(this);return e!==void 0&&(e.i=this.i),this.v},set:function(e){if(e!==this.v){if(po>100)
throw new Error("Cycle detected");(function(n){wn!==0&&po===0&&n.l!==Wl&&(n.l=Wl,mo={S:n,v:n.v,i:n.i,o:mo})})(this),this.
v=e,this.i++,ho++,wn++;try{for(var t=this.t;t!==void 0;t=t.x)t.t.N()}finally{go()}}}});function U(e,t){return new Be(e,t)}
function Ga(e){for(var t=e.s;t!==void 0;t=t.n)if(t.S.i!==t.i||!t.S.h()||t.S.i!==t.i)return!0;return!1}function Ya(e){for(var t=e.
s;t!==void 0;t=t.n){var n=t.S.n;if(n!==void 0&&(t.r=n),t.S.n=t,t.i=-1,t.n===void 0){e.s=t;break}}}function Qa(e){for(var t=e.
s,n=void 0;t!==void 0;){var i=t.p;t.i===-1?(t.S.U(t),i!==void 0&&(i.n=t.n),t.n!==void 0&&(t.n.p=i)):n=t,t.S.n=t.r,t.r!==
void 0&&(t.r=void 0),t=i}e.s=n}function ai(e,t){Be.call(this,void 0,t),this.x=e,this.s=void 0,this.g=ho-1,this.f=4}ai.prototype=
new Be;ai.prototype.h=function(){if(this.f&=-3,1&this.f)return!1;if((36&this.f)==32||(this.f&=-5,this.g===ho))return!0;if(this.
g=ho,this.f|=1,this.i>0&&!Ga(this))return this.f&=-2,!0;var e=Ce;try{Ya(this),Ce=this;var t=this.x();(16&this.f||this.v!==
t||this.i===0)&&(this.v=t,this.f&=-17,this.i++)}catch(n){this.v=n,this.f|=16,this.i++}return Ce=e,Qa(this),this.f&=-2,!0};
ai.prototype.S=function(e){if(this.t===void 0){this.f|=36;for(var t=this.s;t!==void 0;t=t.n)t.S.S(t)}Be.prototype.S.call(
this,e)};ai.prototype.U=function(e){if(this.t!==void 0&&(Be.prototype.U.call(this,e),this.t===void 0)){this.f&=-33;for(var t=this.
s;t!==void 0;t=t.n)t.S.U(t)}};ai.prototype.N=function(){if(!(2&this.f)){this.f|=6;for(var e=this.t;e!==void 0;e=e.x)e.t.
N()}};Object.defineProperty(ai.prototype,"value",{get:function(){if(1&this.f)throw new Error("Cycle detected");var e=Ka(
this);if(this.h(),e!==void 0&&(e.i=this.i),16&this.f)throw this.v;return this.v}});function be(e,t){return new ai(e,t)}function Ja(e){
var t=e.j;if(e.j=void 0,typeof t=="function"){wn++;var n=Ce;Ce=void 0;try{t()}catch(i){throw e.f&=-2,e.f|=8,Ul(e),i}finally{
Ce=n,go()}}}function Ul(e){for(var t=e.s;t!==void 0;t=t.n)t.S.U(t);e.x=void 0,e.s=void 0,Ja(e)}function Fd(e){if(Ce!==this)
throw new Error("Out-of-order effect");Qa(this),Ce=e,this.f&=-2;try{8&this.f&&Ul(this)}finally{go()}}function Ui(e,t){this.
x=e,this.j=void 0,this.s=void 0,this.u=void 0,this.f=32,this.name=t?.name,Sr&&Sr.push(this)}Ui.prototype.c=function(){var e=this.
S();try{if(8&this.f||this.x===void 0)return;var t=this.x();typeof t=="function"&&(this.j=t)}finally{e()}};Ui.prototype.S=
function(){if(1&this.f)throw new Error("Cycle detected");this.f|=1,this.f&=-9,Ja(this),Ya(this),wn++;var e=Ce;return Ce=
this,Fd.bind(this,e)};Ui.prototype.N=function(){2&this.f||(this.f|=2,this.u=Tr,Tr=this)};Ui.prototype.d=function(){this.
f|=8,1&this.f||Ul(this)};Ui.prototype.dispose=function(){this.d()};function $e(e,t){var n=new Ui(e,t);try{n.c()}catch(r){
throw n.d(),r}var i=n.d.bind(n);return i[Symbol.dispose]=i,i}var Za,_o,vo,zd=typeof window<"u"&&!!window.__PREACT_SIGNALS_DEVTOOLS__;var Xa=[];$e(function(){Za=this.N})();function ji(e,t){re[e]=t.bind(null,re[e]||function(){})}function Er(e){if(vo){var t=vo;
vo=void 0,t()}vo=e&&e.S()}function eu(e){var t=this,n=e.data,i=Hn(n);i.name="ReactiveDom",i.value=n;var r=fo(function(){
for(var c=t,d=t.__v;d=d.__;)if(d.__c){d.__c.__$f|=4;break}var m=be(function(){var _=i.value.value;return _===0?0:_===!0?
"":_||""}),h=be(function(){return!Array.isArray(m.value)&&!$l(m.value)}),v=$e(function(){if(this.N=tu,h.value){var _=m.value;
c.__v&&c.__v.__e&&c.__v.__e.nodeType===3&&(c.__v.__e.data=_)}}),w=t.__$u.d;return t.__$u.d=function(){v(),w.call(this)},
[h,m]},[]),l=r[0],a=r[1];return l.value?a.peek():a.value}eu.displayName="ReactiveTextNode";Object.defineProperties(Be.prototype,
{constructor:{configurable:!0,value:Ma(de,null).constructor},type:{configurable:!0,value:eu},props:{configurable:!0,get:function(){
var e=this;return{data:{get value(){return e.value}}}}},__b:{configurable:!0,value:1}});ji("__b",function(e,t){if(Er(),_o=
void 0,typeof t.type=="string"){var n,i=t.props;for(var r in i)if(r!=="children"){var l=i[r];l instanceof Be&&(n||(t.__np=
n={}),n[r]=l,i[r]=l.peek())}}e(t)});ji("__r",function(e,t){if(e(t),t.type!==de){Er();var n,i=t.__c;i&&(i.__$f&=-2,(n=i.__$u)===
void 0&&(i.__$u=n=(function(r,l){var a;return $e(function(){a=this},{name:l}),a.c=r,a})((function(r){return function(){var l;
zd&&((l=this.y)==null||l.call(this)),r.__$f|=1,r.setState({})}})(i),typeof t.type=="function"?t.type.displayName||t.type.
name:""))),_o=i,Er(n)}});ji("__e",function(e,t,n,i){Er(),_o=void 0,e(t,n,i)});ji("diffed",function(e,t){Er(),_o=void 0;var n;
if(typeof t.type=="string"&&(n=t.__e)){var i=t.__np,r=t.props,l=n.U;if(l)for(var a in l){var c=l[a];c===void 0||i&&a in i||
(c.d(),l[a]=void 0)}if(i){l||(l={},n.U=l);for(var d in i){var m=l[d],h=i[d];m===void 0?(m=Hd(n,d,h,r),l[d]=m):m.o(h,r)}}}
e(t)});function Hd(e,t,n,i){var r=t in e&&e.ownerSVGElement===void 0,l=U(n);return{o:function(a,c){l.value=a,i=c},d:$e(function(){
this.N=tu;var a=l.value.value;i[t]!==a&&(i[t]=a,r?e[t]=a:a!=null&&(a!==!1||t[4]==="-")?e.setAttribute(t,a):e.removeAttribute(
t))})}}ji("unmount",function(e,t){if(typeof t.type=="string"){var n=t.__e;if(n){var i=n.U;if(i){n.U=void 0;for(var r in i){
var l=i[r];l&&l.d()}}}var a=t.__np;if(a){var c=t.props;for(var d in a)c[d]=a[d]}t.__np=void 0}else{var m=t.__c;if(m){m.__$f|=
8;var h=m.__$u;h&&(m.__$u=void 0,h.d())}}e(t)});ji("__h",function(e,t,n,i){i<3&&(t.__$f|=2),e(t,n,i)});Bi.prototype.shouldComponentUpdate=
function(e,t){if(this.__R)return!0;var n=this.__$u,i=n&&n.s!==void 0;for(var r in t)return!0;if(this.__f||typeof this.u==
"boolean"&&this.u===!0){var l=2&this.__$f;if(!(i||l||4&this.__$f)||1&this.__$f)return!0}else if(!(i||4&this.__$f)||3&this.
__$f)return!0;for(var a in e)if(a!=="__source"&&e[a]!==this.props[a])return!0;for(var c in this.props)if(!(c in e))return!0;
return!1};function Hn(e,t){return fo(function(){return U(e,t)},[])}var Vd=function(e){queueMicrotask(function(){queueMicrotask(e)})};function qd(){Bl(function(){for(var e;e=Xa.shift();)Za.call(e)})}function tu(){Xa.push(this)===1&&(re.requestAnimationFrame||
Vd)(qd)}var pn=["legacy","imagerep","lsustatus","serverstatus","capacity","abilities","activity","audit","kelp"];var Mr=["overview","events","queues","limits","check","cluster"],wo={overview:"Overview",events:"Events",queues:"Queues",
limits:"Limits",check:"Check",cluster:"Cluster"},Wd=300,Bd={view:"overview",queue:"0",id:"",kinds:"",search:""};function nu(e,t){
let[n="",...i]=e.replace(/^#\/?/,"").split("?"),[r,l,a=""]=n.split("/"),c=Mr.find(h=>h===r)??"overview";if(c!=="events"||
!l)return{...t,view:c,id:""};let d=new URLSearchParams(i.join("?")),m=(d.get("kinds")??"").split(",");return{view:c,queue:l,
id:/^\d+$/.test(a)?a:"",kinds:m.filter(h=>pn.includes(h)).join(),search:d.get("search")??""}}function iu({view:e,queue:t,
id:n,kinds:i,search:r}){if(e!=="events")return`#/${e}`;let l=new URLSearchParams;i&&l.set("kinds",i),r&&l.set("search",r);
let a=l.toString().replaceAll("%2C",",");return`#/events/${t}${n&&`/${n}`}${a&&`?${a}`}`}var ht=U(nu(location.hash,Bd)),
rt=be(()=>ht.value.view),Ue=be(()=>ht.value.queue),Vn=be(()=>ht.value.search),Ud=be(()=>ht.value.kinds),Ft=be(()=>new Set(
Ud.value.split(",").filter(Boolean))),jd=be(()=>ht.value.id&&`${ht.value.queue}/${ht.value.id}`),Yt=be(()=>{let[e="",t]=jd.
value.split("/");return t?{dsid:e,id:t}:void 0}),yo={takesFocus:!0},ui,bo=!1;function xo(e){clearTimeout(ui),ui=void 0;let t=iu(
ht.peek());t!==location.hash&&(e?history.replaceState(null,"",t):history.pushState(null,"",t))}function ru(){xo(bo),bo=!0}
function Cr(e,t=!1){ui!==void 0&&ru(),ht.value={...ht.peek(),...e},xo(t),t||(bo=!1)}addEventListener("hashchange",()=>{clearTimeout(
ui),ui=void 0,bo=!1,yo.takesFocus=!0,ht.value=nu(location.hash,ht.peek()),rt.peek()==="events"&&xo(!0)});function ou(e){
return iu({...ht.value,view:e,id:""})}function Pr(e){Cr({view:e,id:""})}function lu(e){Cr({queue:e,id:""})}function jl(e){
Cr({kinds:[...e].join()})}function Kl(e){ht.value={...ht.peek(),search:e},clearTimeout(ui),ui=setTimeout(ru,Wd)}function ko(e,t,n=!0){
yo.takesFocus=n,Cr({view:"events",queue:e,id:t},Yt.peek()!==void 0)}function So(){Cr({id:""},!0)}rt.peek()==="events"&&xo(
!0);var Kd=/"[^"\\]*(?:\\.[^"\\]*)*"|-?\d+(?:\.\d+)?(?:[eE][+-]?\d+)?/g;function Gd(e){return e.length<16||!/^-?\d+$/.test(e)||
Number.isSafeInteger(Number(e))?e:`"${e}"`}function Ar(e){return JSON.parse(e.replace(Kd,Gd))}function Fe(e,t){let n=BigInt(
e),i=BigInt(t);return n<i?-1:n>i?1:0}function ci(e,t){let n=BigInt(e)-BigInt(t);return(n>0n?n:0n).toString()}var Yd=1e4,ot=class extends Error{constructor(n,i,r){super(i.detail||i.title||`The server answered with status ${n}.`);this.
status=n;this.problem=i;this.retryAfter=r}status;problem;retryAfter},To=class extends Error{};async function Qd(e){try{return Ar(
await e.text())}catch{return{}}}async function Gl(e,t,n={}){let i={...n.headers};e.token&&(i.Authorization=`Bearer ${e.token}`),
n.body!==void 0&&(i["Content-Type"]="application/json");let r;try{r=await fetch(t,{method:n.method??"GET",headers:i,body:n.
body===void 0?null:JSON.stringify(n.body),signal:n.signal??null,cache:"no-store",credentials:"same-origin"})}catch(a){throw new To(
"The server does not answer.",{cause:a})}if(r.ok)return r;let l=Number(r.headers.get("Retry-After")??Number.NaN);throw new ot(
r.status,await Qd(r),Number.isFinite(l)?l:void 0)}async function su(e,t,n={}){let i=AbortSignal.timeout(n.patience??Yd),
r=n.signal?AbortSignal.any([n.signal,i]):i,l=await Gl(e,t,{...n,signal:r}),a;try{a=await l.text()}catch(c){throw new To(
"The server broke off its answer.",{cause:c})}try{return Ar(a)}catch{throw new ot(l.status,{detail:`The answer to ${t} i\
s not JSON.`},void 0)}}var Yl="eventd.token",De=U("starting"),yn=U(),Ki=U(""),$r=U(void 0),uu=be(()=>$r.value!==void 0),au={read:1,write:2,admin:3};
function Eo(e){return yn.value!==void 0&&au[yn.value.role]>=au[e]}function Ql(){let e=/^#token=(.+)$/.exec(location.hash);
if(!e?.[1])return!1;let t=e[1];try{t=decodeURIComponent(t)}catch{}return Jl(t),history.replaceState(null,"",location.pathname+
location.search),!0}function Jl(e){$r.value=e,e===void 0?sessionStorage.removeItem(Yl):sessionStorage.setItem(Yl,e)}function cu(){
$r.value=sessionStorage.getItem(Yl)??void 0}function Zl(e){Jl(void 0),yn.value=void 0,Ki.value=e,De.value="out"}function fu(){
Zl("")}function Jd(){return{token:$r.value}}async function du(e){let t=Jd();try{return await e(t)}catch(n){throw n instanceof
ot&&n.status===401&&t.token===$r.value&&Zl(t.token===void 0?"":"The server refused this token."),n}}function Qt(e,t){return du(
n=>su(n,e,t))}function pu(e,t){return du(n=>Gl(n,e,t))}async function Dr(){try{yn.value=await Qt("/v1/whoami"),Ki.value=
"",De.value="in"}catch(e){if(!(e instanceof ot&&e.status===401))throw e}}async function mu(e){let t=e.trim();if(!/^[\x21-\x7e]+$/.
test(t)){Ki.value="A token consists of visible ASCII characters, without blanks.";return}Jl(t);try{await Dr()}catch(n){Zl(
n instanceof Error?n.message:String(n))}}var Mo=1e3,Zd=10;function Co(e,{after:t,limit:n=Mo,kinds:i=[]},r){let l=[...i].join(),a=`/v1/queues/${e}/events?after=${t}\
&limit=${n}${l&&`&type=${l}`}`;return Qt(a,r&&{signal:r})}async function Xl(e,t,n,i,r=[]){let l=[];for(let a=t;Fe(a,n)<0;){
let c=await Co(e,{after:a,kinds:r},i),d=c.events.filter(m=>Fe(m.id,n)<=0);if(l.push(...d),d.length<c.events.length||Fe(c.
last,a)<=0)break;a=String(c.last)}return l}async function es(e,t){return(await Co(e,{after:"0",limit:1},t)).events[0]}async function Po(e,t,n){
try{return await Qt(`/v1/queues/${e}/events/${t}`,n&&{signal:n})}catch(i){if(i instanceof ot&&(i.status===404||i.status===
400))return;throw i}}async function Ao(e,t,n,i){let r=await es(e,i);for(let l=0,a=t;l<Zd;++l){let c=ci(a,Mo),d=!r||Fe(r.
id,c)>0,m=await Xl(e,c,a,i);if(i?.aborted||!n(m.reverse(),d?"0":c)||d)return;a=c}}var ts=class{rest="";id="";data=[];feed(t){let n=(this.rest+t).split(/\r\n|\n|\r(?!$)/);this.rest=n.pop()??"";let i=[];for(let r of n){
let l=this.take(r);l&&i.push(l)}return i}take(t){if(t===""){let l=this.data.length>0?{id:this.id,data:this.data.join(`
`)}:void 0;return this.data=[],l}let n=t.indexOf(":"),i=n<0?t:t.slice(0,n),r=n<0?"":t.slice(n+1).replace(/^ /,"");i==="d\
ata"&&this.data.push(r),i==="id"&&(this.id=r)}};async function hu(e,t,n){let i=e.getReader(),r=new TextDecoder,l=new ts;
for(;;){let{done:a,value:c}=await i.read();if(a)return;n();let d=l.feed(r.decode(c,{stream:!0}));d.length>0&&t(d)}}function gu(e,t){let n=e.trim().toLowerCase();return i=>t.size>0&&!t.has(i.kind)?!1:n===""?!0:String(i.id)===n||i.kind.toLowerCase().
includes(n)||i.eventString.toLowerCase().includes(n)}function vu(e,t){let n=Number.NEGATIVE_INFINITY;return e.filter(({time:i,queues:r})=>{let l=t-i;return l>86400?!1:r.size===
0?!0:l>1200&&i-n<30?!1:(n=i,!0)})}var xn=U([]);function Xd(e,t){return e===void 0?void 0:Math.max(0,t-Number(e))}function ep(e,t){let n=new Map,i={count:e.
count,oldestAge:void 0};for(let r of e.queues){let l=Xd(r.oldest,t);n.set(String(r.dsid),{count:r.count,oldestAge:l}),l!==
void 0&&(i.oldestAge=Math.max(i.oldestAge??0,l))}return n.set("all",i),n}var tp=90;function ns(e=Date.now()/1e3){let t=xn.
value.at(-1);t&&t.queues.size>0&&(xn.value=[...xn.value,{time:e,queues:new Map}])}function _u(e){let t=Date.now()/1e3,n=xn.
value.at(-1);n&&t-n.time>tp&&ns(n.time+1),xn.value=[...vu(xn.value,t),{time:t,queues:ep(e,t)}]}function bu(){xn.value=[]}var np=2e3,ip=1e4,rp=1e3,op=1e4,lt=U({is:"unknown"}),ze=U(),Jt=U(),mn=U(),Gi=U(""),kn=U(),rs=be(()=>ze.value?.queues.find(
e=>String(e.dsid)==="0")),wu;function lp(e){return new Promise(t=>{let n=setTimeout(t,e);wu=()=>{clearTimeout(n),t()}})}
function fi(){wu?.()}function sp(e){let t=e instanceof Error?e.message:String(e);e instanceof ot?lt.value={is:"troubled",
why:t}:lt.value.is!=="down"&&(lt.value={is:"down",since:Date.now(),why:t},ns())}function ap(e){let t=ze.value;t&&t.startTime!==
e.startTime&&(kn.value=e.startTime,Jt.value=void 0),ze.value=e,mn.value=e.cluster,lt.value={is:"up"},_u(e)}var is=0;async function up(){
if(!(Date.now()<is)){is=Date.now()+ip;try{await Qt("/readyz"),Gi.value=""}catch(e){e instanceof ot&&(Gi.value=e.message)}}}
async function cp(){let e=await Qt("/v1/cluster");mn.value=e.clustered?e:void 0}async function fp(){try{ap(await Qt("/v1\
/stats"))}catch(e){throw e instanceof ot&&De.value==="in"&&await cp().catch(()=>{}),e}}async function dp(){De.value==="s\
tarting"&&await Dr(),De.value==="in"&&(await fp(),Jt.value||(Jt.value=await Qt("/v1/limits")),await up())}function pp(e,t){
return e instanceof ot&&e.retryAfter!==void 0?e.retryAfter*1e3:Math.min(op,Math.max(rp,t*1.6))}async function yu(){let e=0;
for(;;){try{await dp(),e=0}catch(t){sp(t),e=pp(t,e)}await lp(e||np)}}function xu(){ze.value=void 0,Jt.value=void 0,mn.value=
void 0,Gi.value="",kn.value=void 0,lt.value={is:"unknown"},is=0,bu()}var mp=500,Eu=2e3,qn=2e4,hp=150,ku=4e4,Su=500,gp=15e3,vp=6e4,hn=U("off"),Lr=U(""),xt=U(!1),st=U([]),Wn=U([]),Bn=U(0),je=U(),
Ht=U(0),pi=be(()=>Vn.value.trim()!==""||Ft.value.size>0),Or=be(()=>gu(Vn.value,Ft.value)),Zt=U([]),Mu=be(()=>st.value.length>=
qn),Xt=be(()=>{let e=t=>Fe(t.id,je.value??0)<=0;return[...st.value.filter(Or.value),...Zt.value.filter(e)]}),en=be(()=>ze.
value?.queues.find(e=>String(e.dsid)===Ue.value)),Nr=Eu,zt,Rr=[],$o;function _p(){$o=void 0;let e=Rr;if(Rr=[],xt.value){
let t=[...Wn.value,...e];Bn.value+=Math.max(0,t.length-qn),Wn.value=t.slice(-qn)}else Cu(e)}function Cu(e){if(e.length===
0)return;let t=[...e.reverse(),...st.value],n=t.slice(Nr);n[0]&&(je.value=String(n[0].id),pi.value&&(Zt.value=[...n.filter(
Or.value),...Zt.value])),st.value=t.slice(0,Nr)}function bp(e){for(let t of e){let n=Ar(t.data);zt!==void 0&&Fe(n.id,zt)<=
0||(zt=String(n.id),Rr.push(n))}$o??=setTimeout(_p,hp)}function wp(){xt.value=!1;let e=Wn.value;Wn.value=[],Bn.value>0&&
(st.value=[],je.value=ci(e[0]?.id??1,1),Ht.value=Ht.peek()+1),Bn.value=0,Cu(e)}function Do(){xt.value?wp():xt.value=!0}function os(){
clearTimeout($o),$o=void 0,Rr=[],zt=void 0,Nr=Eu,st.value=[],Zt.value=[],Wn.value=[],Bn.value=0,je.value=void 0,Ht.value=
Ht.peek()+1}var Pu=U(0);function Au(){os(),++Pu.value}function $u(e){return zt===void 0||je.value===void 0||Fe(e.id,zt)>
0||Fe(e.id,je.value)<=0||Bn.value>0?!0:[...st.value,...Wn.value,...Rr].some(t=>String(t.id)===String(e.id)&&t.eventString===
e.eventString)}function Du(){return String(en.value?.highestId??0)}async function yp(e,t,n){let i=`/v1/queues/${e}/event\
s/stream`;zt===void 0&&(zt=ci(Du(),mp),je.value=zt);let r=new AbortController,l=setTimeout(()=>r.abort(),ku),a=()=>{clearTimeout(
l),l=setTimeout(()=>r.abort(),ku)};try{let c=await pu(i,{headers:{Accept:"text/event-stream","Last-Event-ID":zt},signal:AbortSignal.
any([t,r.signal])});n();let d=m=>t.aborted||bp(m);c.body&&await hu(c.body,d,a)}finally{clearTimeout(l)}}var Lu;function xp(e,t){
return new Promise(n=>{let i=setTimeout(n,e);Lu=n,t.addEventListener("abort",()=>{clearTimeout(i),n()})})}async function kp(e,t){
let n=Su;for(;!t.aborted;){hn.value="connecting";let i=0;try{await yp(e,t,()=>{hn.value="live",Lr.value="",n=Su})}catch(r){
Lr.value=r instanceof ot?r.message:"",r instanceof ot&&(i=(r.retryAfter??0)*1e3)}if(t.aborted)return;hn.value="broken",await xp(
Math.max(i,n*(.75+Math.random()/2)),t),n=Math.min(gp,n*2)}}var ls=U(!0),Tu;document.addEventListener("visibilitychange",
()=>{clearTimeout(Tu),document.visibilityState==="visible"?ls.value=!0:Tu=setTimeout(()=>ls.value=!1,vp)});function Sp(){
return kn.value!==void 0&&zt!==void 0&&Fe(Du(),zt)<0}function Nu(){let e=be(()=>lt.value.is==="up");$e(()=>{e.value&&Lu?.()});
let t=be(()=>De.value==="in"&&en.value!==void 0),n="";$e(()=>{let i=Ue.value;if(!t.value){hn.value="off",yt(os);return}if(kn.
value,Pu.value,(i!==n||yt(Sp))&&yt(os),n=i,!ls.value){hn.value="resting";return}let r=new AbortController;return yt(()=>{
kp(i,r.signal)}),()=>r.abort()})}var di=U("");async function Ru(){let e=je.value,t=Ue.value;if(!(e===void 0||di.value===
"asking")){di.value="asking";try{let n=0;await Ao(t,e,(i,r)=>{if(t!==Ue.value)return!1;let l=[...st.value,...i];return n=
i.length,Nr=Math.min(qn,Math.max(Nr,l.length)),st.value=l.slice(0,qn),je.value=String(l[qn]?.id??r),n===0}),di.value=n>0||
je.value==="0"?"":"none"}catch{di.value="failed"}}}var Tp=400,Ou=200,Un=U(),tn=U(""),Yi=U(0);function ss(e){let t=new Set(Zt.value.map(r=>String(r.id))),n=e.filter(r=>Or.value(
r)&&!t.has(String(r.id)));if(n.length===0)return;let i=[...Zt.value,...n].sort((r,l)=>Fe(l.id,r.id));Zt.value=i.slice(0,
qn)}function Ep(){let e=en.peek()?.types;return Ft.peek().size===0||!e?!1:[...Ft.peek()].reduce((t,n)=>t+(e[n]??0),0)<=Mo}
async function Mp(e,t){let n=Vn.peek().trim();if(!/^\d{1,20}$/.test(n))return;let i=await Po(e,n,t);i&&!t.aborted&&ss([i])}
async function Cp(e,t,n,i){let r=Un.peek()??je.peek()??"0";if(r!=="0")if(!i&&Ep()){let l=await Xl(e,"0",r,t,Ft.peek());if(t.
aborted)return;ss(l),Yi.value=void 0,Un.value="0"}else Xt.peek().length<n&&await Ao(e,r,(a,c)=>(Yi.value=(Yi.value??0)+a.
length,ss(a),Un.value=c,Xt.value.length<n),t)}async function Iu(e,t){let n=Ue.peek(),i=tn.peek()==="failed";tn.value="as\
king";try{await Mp(n,e),await Cp(n,e,t,i),e.aborted||(tn.value="")}catch{e.aborted||(tn.value="failed")}}var Fu=new AbortController;
function zu(){tn.value!=="asking"&&Iu(Fu.signal,Xt.value.length+Ou)}function Pp(){Zt.value=[],Un.value=void 0,tn.value="",
Yi.value=0}function Hu(){let e=be(()=>rt.value==="events"&&pi.value&&je.value!==void 0);$e(()=>{let t=new AbortController;
if(Fu=t,Ue.value,Or.value,Ht.value,yt(Pp),!e.value)return;let n=setTimeout(()=>{Iu(t.signal,Ou)},Tp);return()=>{clearTimeout(
n),t.abort()}})}function as(e,t,n){let i=`eventd.${e}`,r=t.find(a=>a===localStorage.getItem(i)),l=U(r??n);return $e(()=>localStorage.setItem(
i,l.value)),l}var Lo=["auto","light","dark"],Sn=as("theme",Lo,"auto"),Pe=as("clock",["local","utc"],"local"),Ir=as("shor\
tcuts",["on","off"],"on");function No(){Sn.value=Lo[(Lo.indexOf(Sn.value)+1)%Lo.length]??"auto"}function Ro(){Pe.value=Pe.
value==="utc"?"local":"utc"}function Vu(){$e(()=>{document.documentElement.dataset.theme=Sn.value})}var Ap=100,$p=10,gt=U(new Set),Fr=U(),Qi=U([]),qu="",mi="0";async function Dp(e,t){let n=[...new Set(t.map(a=>String(a.id)))].
sort(Fe),i=a=>Fe(a,mi)>0,r=[...n.filter(i),...n.filter(a=>!i(a))],l=[];for(let a=0;a<$p&&r[0]!==void 0;++a){let c=ci(r[0],
1),{events:d}=await Co(e,{after:c,limit:Ap}),m=new Set(d.map(w=>String(w.id))),h=d.at(-1)?.id,v=w=>Fe(w,c)>0&&(h===void 0||
Fe(w,h)<=0);for(;r[0]!==void 0&&v(r[0]);)mi=r[0],m.has(mi)||l.push(mi),r.shift()}return r.length===0&&(mi="0"),l}async function Lp(){
let e=Ue.peek(),t=Ht.peek(),n=[...st.peek(),...Zt.peek()],i=n.filter(v=>String(v.id)===Yt.peek()?.id),r=[...Qi.peek(),...i],
l=await es(e);if(Ht.peek()!==t)return;if(l&&!xt.peek()&&!$u(l)&&l.eventString!==qu){qu=l.eventString,Au();return}let a=v=>!l||
Fe(v.id,l.id)<0,c=r.filter(v=>!a(v)),d=await Dp(e,c);if(Ht.peek()!==t)return;let m=new Set([...gt.peek(),...d]),h=v=>a(v)||
m.has(String(v.id));gt.value=new Set(n.filter(h).map(v=>String(v.id))),Fr.value=l?String(l.id):void 0}function Wu(e){gt.
value=new Set([...gt.peek(),e])}function Np(){let{count:e,highestId:t}=en.value??{},n=Qi.value;return[Ue.value,Ht.value,
e,t,n[0]?.id,n.at(-1)?.id].join()}function Bu(){let e="",t=!1,n=async()=>{let i=rt.value==="events"||rt.value==="overvie\
w",r=Np();if(!(t||!i||document.hidden||r===e)&&!(!en.value||je.value===void 0)){t=!0;try{await Lp(),e=mi==="0"?r:""}catch{}finally{
t=!1}}};$e(()=>{ze.value&&yt(()=>{n()})}),$e(()=>{Ht.value,gt.value=new Set,Fr.value=void 0,mi="0"})}var Rp=String.raw`\u0000-\u001f\u007f-\u009f`,Op=String.raw`\u061c\u200b-\u200f\u2028-\u202e\u2060-\u2069\ufeff`,Ip=new RegExp(
`[${Rp}${Op}]`,"g");function Fp(e){let t=e.charCodeAt(0);return t<32?String.fromCharCode(9216+t):t===127?"␡":`<U+${t.toString(
16).toUpperCase().padStart(4,"0")}>`}function he(e){return e.replace(Ip,Fp)}function K(e){let t=String(e);return/^-?\d+$/.test(t)?t.replace(/\B(?=(\d{3})+$)/g," "):t}function Vt(e){let t=["B","K\
iB","MiB","GiB","TiB","PiB"],n=Number(e),i=0;for(;n>=1024&&i+1<t.length;++i)n/=1024;return`${i===0?n:n.toFixed(1)} ${t[i]}`}
function Tn(e){let t=Math.max(0,Math.round(e));if(t<60)return`${t} s`;if(t<3600)return`${Math.floor(t/60)} min ${t%60}\
 s`;if(t<86400)return`${Math.floor(t/3600)} h ${Math.floor(t%3600/60)} min`;let n=Math.floor(t/86400),i=Math.floor(t%
86400/3600);return n>=100?`${K(n)} d`:`${n} d ${i} h`}function Uu(e){return Tn(e).replace(/ 0\u00a0\w+$/,"")}function us(...e){
let t=Math.max(...e)<1,n=t?" /min":" /s";return i=>{let r=t?i*60:i;return r===0?`0${n}`:r>=100?`${K(Math.round(r))}${n}`:
`${r.toFixed(r<1?2:1)}${n}`}}function zr(e){return String(e).padStart(2,"0")}function Oo(e){return jn(e).replace(/^.*\//,
"").replaceAll("_"," ")}function jn(e){return e==="utc"?"UTC":new Intl.DateTimeFormat().resolvedOptions().timeZone}function at(e,t){
let n=new Date(Number(e)*1e3);return Number.isNaN(n.getTime())||n.getUTCFullYear()>9999?`${e} s`:t==="utc"?n.toISOString().
slice(0,19).replace("T"," "):`${n.getFullYear()}-${zr(n.getMonth()+1)}-${zr(n.getDate())} ${zr(n.getHours())}:${zr(n.getMinutes())}\
:${zr(n.getSeconds())}`}function Io(e,t){return at(e/1e3,t).slice(11)}function ju(e,t,n=Date.now()/1e3){let i=at(e,t),r=at(
n,t).slice(0,10);return i.startsWith(r)?i.slice(11):i.slice(0,10)}function Ji(e){return Tn(Date.now()/1e3-Number(e))}var Fo=U("");function En(e){Fo.value=e===Fo.value?`${e} `:e}var zp=Symbol.for("pv"),Hp=0;function o(e,t,n,i,r,l){t||(t={});var a,c,d=t;if("ref"in d&&typeof e!="function")for(c in d={},t)c=="ref"?a=t[c]:d[c]=t[c];
var m={type:e,props:d,key:n,ref:a,__k:null,__:null,__b:0,__e:null,__c:null,constructor:zp,__v:--Hp,__i:-1,__u:0};return(r||
l)&&(m.__source=r,m.__self=l),re.vnode&&re.vnode(m),m}function zo({open:e,title:t,onClose:n,children:i}){let r=Re(null),l=Ua();return ke(()=>{e&&!r.current?.open&&r.current?.
showModal(),e||r.current?.close()},[e]),o("dialog",{ref:r,"aria-labelledby":l,onClose:n,children:[o("h2",{id:l,children:t}),
e?i:null]})}var Vp=10*6e4,qp={error:"bad",warning:"warn"};function Wp({findings:e}){return o("table",{class:"data findings",children:[
o("thead",{children:o("tr",{children:[o("th",{scope:"col",children:"level"}),o("th",{scope:"col",children:"code"}),o("th",
{scope:"col",children:"what was found"})]})}),o("tbody",{children:e.map((t,n)=>o("tr",{children:[o("td",{children:o("spa\
n",{class:`badge ${qp[t.level]??""}`,children:t.level})}),o("td",{class:"figure",children:t.code}),o("td",{class:"wide",
children:he(t.message)})]},n))})]})}function Ku(e){let t=e.findings.length,n=e.checked==="database"?"The database is":"T\
he queues are";if(t===0)return`${n} in order: nothing was found.`;let i=`${K(t)} finding${t===1?"":"s"}`;return e.fix?e.
remaining===0?`${i}; nothing remains to be repaired.`:`${i}; ${K(e.remaining)} could not be repaired.`:`${i}. Nothing wa\
s changed.`}function Bp({report:e,at:t}){let n=e.findings.length===0||e.fix&&e.remaining===0;return o(de,{children:[o("p",
{class:n?"verdict ok":"verdict bad","data-testid":"verdict",children:[Ku(e)," ",o("span",{class:"muted",children:at(t,Pe.
value)})]}),e.findings.length>0?o(Wp,{findings:e.findings}):null]})}function Up(){let e=Hn(!1),t=Hn(void 0),n=async i=>{
e.value=!0;let r=()=>Date.now()/1e3;try{let a=await Qt("/v1/check",{method:"POST",body:{fix:i},patience:Vp});t.value={report:a,
at:r()},En(Ku(a))}catch(l){t.value={failure:l instanceof Error?l.message:String(l),at:r()}}e.value=!1};return{busy:e.value,
done:t.value,run:n}}function jp({open:e,answer:t}){return o(zo,{open:e,title:"Repair the queues?",onClose:()=>t(!1),children:[
o("p",{children:"Rows filed under a wrong id get a new one. Rows whose event string cannot be read are deleted. This can\
not be undone: copy the database before, should anybody want to look at them."}),o("div",{class:"actions",children:[o("b\
utton",{type:"button",onClick:()=>t(!1),children:"Leave as it is"}),o("button",{type:"button",class:"danger",onClick:()=>t(
!0),children:"Repair"})]})]})}function Kp(){let e=Hn(!1),{busy:t,done:n,run:i}=Up(),r=a=>{e.value=!1,a&&i(!0)},l=n?.report&&
n.report.findings.length>0&&!n.report.fix;return o(de,{children:[o("div",{class:"actions start",children:[o("button",{type:"\
button",class:"primary",disabled:t,onClick:()=>i(!1),children:t?"Looking …":"Look for damage"}),l?o("button",{type:"bu\
tton",class:"danger",disabled:t,onClick:()=>e.value=!0,children:"Repair …"}):null]}),n?.failure?o("p",{class:"banner b\
ad",role:"alert",children:n.failure}):null,n?.report?o(Bp,{report:n.report,at:n.at}):null,o(jp,{open:e.value,answer:r})]})}
function Gu(){return o("section",{class:"card","aria-labelledby":"check-title",children:[o("h2",{id:"check-title",children:"\
Check"}),o("p",{class:"muted",children:["Looks through all queues for events that cannot be read or are filed under a wr\
ong id. Looking changes nothing; a repair asks first.",mn.value?" In cluster mode this is about the database, the copy t\
o fall back to: the cluster keeps its queues itself.":""]}),Eo("admin")?o(Kp,{}):o("p",{children:"This needs the role ad\
min."})]})}function hi({name:e,value:t,most:n,text:i}){let r=n>0?Math.min(1,Math.max(0,t/n)):0,l=r>=.9?"bad":r>=.7?"warn":"ok";return o(
"div",{class:`meter ${l}`,children:[o("div",{class:"meter-text",children:[o("span",{children:e}),o("span",{class:"figure",
children:i})]}),o("div",{class:"bar",role:"meter","aria-label":e,"aria-valuemin":0,"aria-valuemax":n,"aria-valuenow":Math.
min(t,n),"aria-valuetext":i,children:o("div",{style:{width:`${100*r}%`}})})]})}function gi({name:e,text:t}){return o("di\
v",{class:"meter",children:o("div",{class:"meter-text",children:[o("span",{children:e}),o("span",{class:"figure muted",children:t})]})})}function Gp({member:e}){let{databaseBytes:t,quotaBytes:n,databaseBytesInUse:i}=e,r="Database";return n===0?o(gi,{name:r,
text:Vt(t)}):o(de,{children:[o(hi,{name:r,value:t,most:n,text:`${Vt(t)} of ${Vt(n)}`}),o("p",{class:"note",children:[Vt(
i)," in use"]})]})}function Yp({member:e}){let t=e.reachable?e.leader?"leader":"member":"not reachable",n=e.reachable?e.
leader?"accent":"":"bad";return o("li",{class:"card",children:[o("div",{class:"card-head",children:[o("h3",{children:he(
e.name||e.endpoint)}),o("span",{class:`badge ${n}`,children:t})]}),e.name?o("p",{class:"muted",children:[he(e.endpoint),
", version ",he(e.version)]}):null,e.reachable?o(Gp,{member:e}):null,e.failure?o("p",{class:"problem",children:he(e.failure)}):
null]})}function Qp(e){let t=e.filter(r=>r.reachable),n=Math.floor(e.length/2)+1,i=t.some(r=>r.leader)?"":" None of them\
 leads.";return`${t.length} of ${e.length} members answer; ${n} are needed.${i}`}function Yu(){let e=mn.value;return e?o(
"section",{"aria-labelledby":"cluster-title",children:[o("h2",{id:"cluster-title",children:"Cluster"}),o("p",{class:"pag\
e-note","data-testid":"quorum",children:Qp(e.members)}),e.failure?o("p",{class:"banner bad",role:"alert",children:he(e.failure)}):
null,e.alarms.map(t=>o("p",{class:"banner warn",children:[o("strong",{children:"Alarm:"})," ",he(t)]},t)),o("ul",{class:"\
members",children:e.members.map(t=>o(Yp,{member:t},t.endpoint))})]}):o("section",{class:"card","aria-labelledby":"cluste\
r-title",children:[o("h2",{id:"cluster-title",children:"Cluster"}),o("p",{class:"muted",children:"This server keeps its \
queues in its own database; it is in no cluster."})]})}function Jp(e,t){let n=Number(e)/Number(t);return Number.isFinite(n)?`${(100*n).toFixed(1)} % used`:""}var Zp={legacy:e=>[
e.payload],imagerep:e=>[e.path,`lsu ${e.lsu}`,`size ${e.size}`],lsustatus:e=>[e.server,`state ${e.state}`],serverstatus:e=>[
e.server,`state ${e.state}`],capacity:e=>[e.server,Jp(e.used,e.capacity),`used ${K(e.used??"")}`],abilities:e=>[e.server,
`flags 0x${Number(e.flags).toString(16).toUpperCase()}`],activity:e=>[e.msg,`action ${e.action}`,`severity ${e.severity}`],
audit:e=>[e.AUditMSg,`action ${e.action}`],kelp:e=>[e.string,`issue ${e.issue}`,`severity ${e.severity}`]};function Ho(e){
let t=Zp[e.kind];if(!t||Object.keys(e.fields).length===0)return{main:e.eventString,details:[]};let[n,...i]=t(e.fields).map(
r=>String(r??""));return{main:n??"",details:i.filter(r=>r!=="")}}function Mn({name:e}){return o("span",{class:"kind","data-kind":e,children:e})}function Qu(e){let t=matchMedia(e),n=U(t.matches);return t.addEventListener("change",()=>n.value=t.matches),n}var Ju=Qu(
"(prefers-color-scheme: dark)"),Vo=Qu("(max-width: 640px)");var Zu=8,Cn=e=>`${e.dsid}/${e.id}`;function Xp({event:e,index:t,height:n,active:i,opened:r,onActive:l}){let{main:a,details:c}=Ho(
e),d=gt.value.has(String(e.id));return o("div",{role:"row",class:`row${e.problem?" damaged":""}${d?" gone":""}`,"aria-ro\
windex":t+2,"aria-selected":r,tabIndex:i?0:-1,"data-key":Cn(e),style:{transform:`translateY(${t*n}px)`,height:`${n}px`},
onFocus:l,onClick:()=>ko(String(e.dsid),String(e.id),!1),children:[o("span",{role:"gridcell",class:"id",children:e.id}),
o("span",{role:"gridcell",class:"when",children:at(e.date,Pe.value)}),o("span",{role:"gridcell",children:o(Mn,{name:e.kind})}),
o("span",{role:"gridcell",class:"what",children:[d?o("span",{class:"badge",children:"deleted"}):null,e.problem?o("strong",
{class:"problem",children:[he(e.problem)," "]}):null,he(a),c.map(m=>o("span",{class:"detail",children:he(m)},m))]})]})}var em={
ArrowDown:e=>e+1,ArrowUp:e=>e-1,j:e=>e+1,k:e=>e-1,PageDown:(e,t)=>e+t,PageUp:(e,t)=>e-t,Home:()=>0,End:(e,t,n)=>n};function tm(e,t){
let n=Re(null),[i,r]=It({top:0,height:600}),l=Re(void 0),a=()=>{let d=n.current;if(!d)return;let m=Math.floor(d.scrollTop/
t),h=e[m],v=d.scrollTop-m*t;l.current=d.scrollTop>0&&h?{key:Cn(h),offset:v}:void 0,r({top:d.scrollTop,height:d.clientHeight})},
c=Re(a);return c.current=a,kr(()=>{if(!n.current)return;let d=new ResizeObserver(()=>c.current());return d.observe(n.current),
()=>d.disconnect()},[]),kr(()=>{let d=l.current,m=d?e.findIndex(h=>Cn(h)===d.key):-1;d&&m>=0&&n.current&&(n.current.scrollTop=
m*t+d.offset),c.current()},[e,t]),{place:n,sight:i,look:a}}function nm(e,t,n,i){let r=Math.max(0,Math.floor(e.top/t)-Zu),
l=Math.min(n,Math.ceil((e.top+e.height)/t)+Zu),a=Array.from({length:Math.max(0,l-r)},(c,d)=>r+d);return i>=l?a.push(i):i>=
0&&i<r&&a.unshift(i),a}function Xu(e,t){return e?.querySelector(`[data-key="${t}"]`)??null}function ec({rows:e,empty:t}){
let n=Vo.value?52:30,{place:i,sight:r,look:l}=tm(e,n),[a,c]=It(""),d=Yt.value?`${Yt.value.dsid}/${Yt.value.id}`:"",m=e.findIndex(
E=>Cn(E)===a),h=m>=0?m:Math.min(e.length-1,Math.floor(r.top/n)),v=Re("");ke(()=>{let E=v.current;v.current=d,d?c(d):E&&Xu(
i.current,E)?.focus({preventScroll:!0})},[d]);let w=nm(r,n,e.length,h);ke(()=>{Qi.value=w.flatMap(E=>e[E]??[])});let _=E=>{
let M=e[E],A=i.current;if(!M||!A)return;c(Cn(M));let y=n;E*n<A.scrollTop&&(A.scrollTop=E*n);let $=(E+1)*n+y-A.clientHeight;
$>A.scrollTop&&(A.scrollTop=$),requestAnimationFrame(()=>{Xu(A,Cn(M))?.focus({preventScroll:!0})}),d&&ko(String(M.dsid),
String(M.id),!1)},S=E=>{if(E.ctrlKey||E.metaKey||E.altKey)return;let M=e[h];if(E.key==="Enter"&&M){E.preventDefault(),ko(
String(M.dsid),String(M.id));return}let A=em[E.key];if(!A||e.length===0)return;E.preventDefault();let y=Math.max(1,Math.
floor(r.height/n)-2);_(Math.min(e.length-1,Math.max(0,A(h,y,e.length-1))))};return o("div",{ref:i,class:"grid",role:"gri\
d","aria-label":"Events, newest first","aria-rowcount":e.length+1,style:{"--id-width":`${String(e[0]?.id??"").length}ch`},
onScroll:l,onKeyDown:S,children:[o("div",{role:"row",class:"row head","aria-rowindex":1,children:[o("span",{role:"column\
header",class:"id",children:"id"}),o("span",{role:"columnheader",title:jn(Pe.value),children:["time (",Oo(Pe.value),")"]}),
o("span",{role:"columnheader",children:"kind"}),o("span",{role:"columnheader",children:"event"})]}),o("div",{role:"rowgr\
oup",class:"rows",style:{height:`${e.length*n}px`},children:w.map(E=>{let M=e[E];return M?o(Xp,{event:M,index:E,height:n,
active:E===h,opened:Cn(M)===d,onActive:()=>c(Cn(M))},Cn(M)):null})}),e.length===0?o("p",{class:"empty",children:t}):null]})}var im={mark:"M2 3.5h12M2 8h12M2 12.5h7",auto:"M8 2.5a5.5 5.5 0 1 0 0 11zM8 2.5a5.5 5.5 0 0 1 0 11",light:"M8 5.2a2.8 2.\
8 0 1 1 0 5.6 2.8 2.8 0 0 1 0-5.6M8 1v1.6M8 13.4V15M1 8h1.6M13.4 8H15M3 3l1.2 1.2M11.8 11.8 13 13M13 3l-1.2 1.2M4.2 11.8\
 3 13",dark:"M13.5 9.6A5.8 5.8 0 0 1 6.4 2.5a5.8 5.8 0 1 0 7.1 7.1z",clock:"M8 1.8a6.2 6.2 0 1 1 0 12.4A6.2 6.2 0 0 1 8 \
1.8M8 4.6V8l2.4 1.6",help:"M5.9 6.1a2.1 2.1 0 1 1 3 1.9c-.6.3-.9.7-.9 1.4M8 11.4v.6M8 1.8a6.2 6.2 0 1 1 0 12.4A6.2 6.2 0\
 0 1 8 1.8",close:"M4 4l8 8M12 4l-8 8",pause:"M5.5 3.5v9M10.5 3.5v9",play:"M5 3l8 5-8 5z"};function Pn({name:e}){return o(
"svg",{class:`glyph ${e}`,viewBox:"0 0 16 16","aria-hidden":"true",children:o("path",{d:im[e]})})}var Zi=U(!1),Hr=U(!1),nc=[["1 … 6","go to a view"],["/","search in the events"],["p","pause the list of events, or go \
on"],["↑ ↓ or k j","move in the list of events"],["Page ↑ ↓, Home, End","move further"],["Enter","open the event"],
["Esc","close the event, or this help"],["c","copy the event string"],["t","theme: as the system, light, dark"],["u","ti\
mes: local or UTC"],["?","this help"]];function rm(){Pr("events"),Hr.value=!0}function om(){document.getElementById("cop\
y-event-string")?.click()}var lm={"/":rm,"?":()=>Zi.value=!0,c:om,p:()=>rt.value==="events"&&Do(),t:No,u:Ro};function sm(e){
return e instanceof HTMLElement&&e.matches("input, textarea, select")}function tc(e){if(e.defaultPrevented||e.ctrlKey||e.
metaKey||e.altKey||De.value!=="in"||document.querySelector("dialog[open]"))return;if(e.key==="Escape"&&Yt.value){So();return}
if(sm(e.target)||Ir.value==="off")return;let t=Mr[Number(e.key)-1],n=t?()=>Pr(t):lm[e.key];n&&(e.preventDefault(),n())}function ic(){
return addEventListener("keydown",tc),()=>removeEventListener("keydown",tc)}async function am(e,t){try{return await navigator.clipboard.writeText(e),"Copied"}catch{let n=t.closest(".card-head")?.nextElementSibling;
return n&&getSelection()?.selectAllChildren(n),"Selected: press Ctrl+C"}}function cs({text:e,name:t,id:n}){let[i,r]=It("");
return ke(()=>{if(!i)return;let l=setTimeout(()=>r(""),2e3);return()=>clearTimeout(l)},[i]),o("button",{type:"button",id:n,
onClick:async l=>{let a=await am(e,l.currentTarget);r(a),En(a)},children:i||t})}function um({dsid:e,id:t}){let[n,i]=It(()=>{let r=Xt.peek().find(l=>String(l.id)===t&&String(l.dsid)===e);return r?{event:r}:
{}});return ke(()=>{Po(e,t).then(r=>{r?i({event:r}):n.event?Wu(t):i({failure:"This event is not in the queue (any more)."})},
r=>n.event||i({failure:r.message}))},[]),n}var cm=new Set(["time","date"]);function fm({name:e,value:t}){let n=typeof t==
"number"||dm(t);return cm.has(e)&&n?o(de,{children:[String(t),o("div",{class:"muted",children:[at(t,"utc")," UTC"]})]}):
o(de,{children:n?K(t):he(String(t))})}function dm(e){return typeof e=="string"&&/^\d{16,20}$/.test(e)}function pm({event:e}){
let t=Jt.value?.kinds[e.kind]?.fields??[],n=new Map(t.map(i=>[i.key,i.help]));return o("dl",{class:"fields",children:Object.
entries(e.fields).map(([i,r])=>o("div",{children:[o("dt",{title:n.get(i),children:he(i)}),o("dd",{children:o(fm,{name:i,
value:r})})]},i))})}function mm({event:e}){return o("dl",{class:"fields",children:[o("div",{children:[o("dt",{children:"\
kind"}),o("dd",{children:[o(Mn,{name:e.kind})," ",o("span",{class:"muted",children:["type ",e.type]})]})]}),o("div",{children:[
o("dt",{children:"queue"}),o("dd",{children:String(e.dsid)==="0"?"global queue":`data selection ${e.dsid}`})]}),o("div",
{children:[o("dt",{children:"date"}),o("dd",{children:[at(e.date,"local")," ",o("span",{class:"muted",children:jn("local")}),
o("div",{class:"muted",children:[at(e.date,"utc")," UTC"]}),o("div",{class:"muted",children:[Ji(e.date)," ago"]})]})]})]})}
function hm({event:e}){return o(de,{children:[e.problem?o("p",{class:"banner bad",children:he(e.problem)}):null,o(mm,{event:e}),
o("h3",{children:"Fields"}),Object.keys(e.fields).length>0?o(pm,{event:e}):o("p",{class:"muted",children:"Its event stri\
ng cannot be taken apart."}),o("div",{class:"card-head",children:[o("h3",{children:"Event string"}),o(cs,{id:"copy-event\
-string",text:e.eventString,name:"Copy"})]}),o("pre",{class:"raw","data-testid":"event-string",children:he(e.eventString)}),
e.eventStringHex?o(de,{children:[o("div",{class:"card-head",children:[o("h3",{children:"Its bytes"}),o(cs,{text:e.eventStringHex,
name:"Copy"})]}),o("p",{class:"muted",children:"The event string is not UTF-8; this is what is stored."}),o("pre",{class:"\
raw",children:e.eventStringHex})]}):null]})}function gm(){let e=Re(null);return ke(()=>{(yo.takesFocus||Vo.peek())&&e.current?.
focus({preventScroll:!0})},[]),e}function rc(e){let{event:t,failure:n}=um(e),i=gm();return o("aside",{class:"card panel",
"aria-labelledby":"panel-title",children:[o("div",{class:"card-head",children:[o("h2",{id:"panel-title",ref:i,tabIndex:-1,
children:["Event ",e.id]}),o("button",{type:"button",class:"icon","aria-label":"Close",onClick:So,children:o(Pn,{name:"c\
lose"})})]}),t&&gt.value.has(e.id)?o("p",{class:"banner warn",children:"Deleted: the queue does not have it any more."}):
null,t?o(hm,{event:t}):null,t||n?null:o("p",{class:"muted",children:"Asking for it …"}),n?o("p",{role:"alert",children:n}):
null]})}function Xi(e){return String(e.dsid)==="0"?"global queue":e.name?`${e.dsid}: ${he(e.name)}`:`data selection ${e.dsid}`}var vm={off:["not listening",""],connecting:["connecting",""],live:["live","ok"],broken:["interrupted, trying again","ba\
d"],resting:["resting while this page is hidden",""]};function _m(e){let t=new Set(Ft.value);t.delete(e)||t.add(e),jl(t)}
function bm(){Do(),En(xt.value?"The list is paused.":"The list goes on.")}function wm(){let e=ze.value?.queues??[];return o(
"label",{class:"field",children:[o("span",{class:"unseen",children:"Queue"}),o("select",{value:Ue.value,onChange:t=>lu(t.
currentTarget.value),children:[en.value?null:o("option",{value:Ue.value,children:["queue ",Ue.value]}),e.map(t=>o("optio\
n",{value:String(t.dsid),children:Xi(t)},t.dsid))]})]})}function ym(){return o("fieldset",{class:"choices kinds",children:[
o("legend",{class:"unseen",children:"Kinds shown"}),o("button",{type:"button","aria-pressed":Ft.value.size===0,onClick:()=>jl(
[]),children:"all kinds"}),pn.map(e=>o("button",{type:"button",class:"kind","data-kind":e,"aria-pressed":Ft.value.has(e),
onClick:()=>_m(e),children:e},e))]})}function xm(){let[e,t]=vm[hn.value];if(!xt.value&&hn.value==="broken"&&Lr.value)return o(
"span",{class:"state bad",children:["interrupted: ",he(Lr.value)]});if(!xt.value)return o("span",{class:`state ${t}`,children:e});
let n=Bn.value>0?` and ${K(Bn.value)} more`:"";return o("span",{class:"state warn",children:["paused, ",K(Wn.value.length),
n," new"]})}function km(){let e=Re(null);return ke(()=>{Hr.value&&e.current?.focus(),Hr.value=!1},[Hr.value]),o("div",{class:"\
tools-row",children:[o(wm,{}),o("label",{class:"field grow",children:[o("span",{class:"unseen",children:"Search in the e\
vents"}),o("input",{ref:e,type:"search",placeholder:"Search id or text",value:Vn.value,onInput:t=>Kl(t.currentTarget.value),
onKeyDown:t=>t.key==="Escape"&&Kl("")})]}),o("button",{type:"button",class:"with-icon","aria-pressed":xt.value,onClick:bm,
children:[o(Pn,{name:xt.value?"play":"pause"})," ",xt.value?"Go on":"Pause"]})]})}var oc={"":"Older events",asking:"Look\
ing …",none:"None found there; look further back",failed:"The server did not answer; try again"};function fs(){let e=je.
value;return e===void 0||e==="0"?e==="0":Fr.value!==void 0&&Fe(Fr.value,e)>0}function Sm(){let e=st.value.filter(t=>!gt.
value.has(String(t.id))).length;return hn.value==="live"&&!xt.value&&e===Number(en.value?.count)}function Tm(){if(je.value===
void 0)return null;if(fs()){let e=Sm()?"all that are stored":"nothing older is stored";return o("span",{class:"muted",children:e})}
return Mu.value?o("span",{class:"muted",children:"the list holds no more"}):o("button",{type:"button",disabled:di.value===
"asking",onClick:Ru,children:oc[di.value]})}function Em(){let e=Un.value??je.value;return e===void 0?null:tn.value==="as\
king"?o("span",{class:"muted",children:"Looking further back …"}):e==="0"||fs()?o("span",{class:"muted",children:"noth\
ing older is stored"}):o(de,{children:[o("span",{class:"muted",children:["looked through down to id ",K(e)]}),o("button",
{type:"button",onClick:zu,children:tn.value==="failed"?oc.failed:"Look further back"})]})}function Mm(){let e=st.value.length+
(Yi.value??Number.NEGATIVE_INFINITY),t=Xt.value.length;return pi.value&&t<e?`${K(t)} of ${K(e)} events`:t===1?"1 event":
`${K(t)} events`}function Cm(){let e=Xt.value.filter(t=>gt.value.has(String(t.id))).length;return o("div",{class:"list-f\
oot",children:[o("span",{children:[o("span",{"data-testid":"count",children:Mm()}),e>0?o("span",{class:"muted",children:[
", ",K(e)," deleted since"]}):null]}),pi.value?o(Em,{}):o(Tm,{})]})}function Pm(){return o("p",{class:"banner warn",role:"\
alert",children:["There is no queue ",he(Ue.value)," here. ",o("a",{href:"#/events/0",children:"The global queue"})]})}function Am(){
if(pi.value){let e=Un.value==="0"||fs();return tn.value==="asking"||!e&&Un.value===void 0?"":e?"No event in the queue ma\
tches.":"No event matches so far."}return st.value.length>0?"":hn.value==="live"?"No events here; new ones appear as the\
y are stored.":""}function $m(){let e=tn.value==="asking",t=`${Vn.value}|${[...Ft.value].join()}`;ke(()=>{if(t==="|"||e)
return;let n=setTimeout(()=>En(`${Xt.peek().length} events match.`),800);return()=>clearTimeout(n)},[t,e])}function lc(){
$m();let e=ze.value!==void 0&&en.value===void 0,t=e?void 0:Yt.value;return o("div",{class:`events ${t?"with-panel":""}`,
children:[o("section",{class:"list card","aria-labelledby":"events-title",children:[o("div",{class:"card-head",children:[
o("h2",{id:"events-title",children:"Events"}),o(xm,{})]}),o(km,{}),o(ym,{}),e?o(Pm,{}):null,o(ec,{rows:Xt.value,empty:Am()}),
o(Cm,{})]}),t?o(rc,{dsid:t.dsid,id:t.id},`${t.dsid}/${t.id}`):null]})}function Dm({scrollLeft:e,scrollWidth:t,clientWidth:n}){let i=[];return e>1&&i.push("left"),e+n<t-1&&i.push("right"),i.join(
" ")}function qo({label:e,children:t}){let n=Re(null),[i,r]=It(""),l=()=>n.current&&r(Dm(n.current));return kr(()=>{let a=n.
current;if(!a)return;let c=new ResizeObserver(l);for(let d of[a,...a.children])c.observe(d);return()=>c.disconnect()},[]),
o("div",{class:"wide-frame","data-more":i,children:o("div",{ref:n,class:"scroll",tabIndex:0,role:"region","aria-label":e,
onScroll:l,children:t})})}function Lm({limit:e}){let t=rs.value?.count??0,n="Length of the global queue";return e===0?o(gi,{name:n,text:`${K(t)}, \
no limit`}):o(hi,{name:n,value:t,most:e,text:`${K(t)} of ${K(e)}`})}function Nm({days:e}){let t=rs.value?.oldest,n=t===void 0?
0:Math.max(0,Date.now()/1e3-Number(t)),i="Age of its oldest event";if(e===0)return o(gi,{name:i,text:`${Tn(n)}, no limit`});
let r=`${Tn(n)} of ${K(e)} d`;return o(hi,{name:i,value:Math.round(n),most:e*86400,text:r})}function sc({name:e,value:t,
most:n}){return n?o(hi,{name:e,value:t,most:n,text:`${K(t)} of ${K(n)}`}):o(gi,{name:e,text:K(t)})}function Rm({now:e}){
let t=e.bytes?.diskFree;if(t===void 0)return null;let n=Number(e.bytes?.database??0)+Number(e.bytes?.wal??0);return o(gi,
{name:"Database",text:`${Vt(n)}, ${Vt(t)} free on its disk`})}function Om({cluster:e}){let t=e.members.filter(c=>c.quotaBytes>
0),n=c=>c.databaseBytes/c.quotaBytes,[i]=t.sort((c,d)=>n(d)-n(c));if(!i)return null;let{name:r,databaseBytes:l,quotaBytes:a}=i;
return o(hi,{name:`Database of ${he(r)}`,value:l,most:a,text:`${Vt(l)} of ${Vt(a)}`})}function Wo({now:e}){return o(de,{
children:[o(Lm,{limit:e.countLimit}),o(Nm,{days:e.ageLimitDays}),o(sc,{name:"Connections",value:e.connections,most:Jt.value?.
connections}),o(sc,{name:"Waiting readers",value:e.waiting,most:Jt.value?.waiting}),e.cluster?o(Om,{cluster:e.cluster}):
o(Rm,{now:e})]})}function vi({name:e,value:t}){return t===void 0?null:o("div",{children:[o("dt",{children:e}),o("dd",{class:"figure",children:t})]})}
var _i=(e,t)=>e===void 0?void 0:e===0?"no limit":t(e);function Im({known:e}){return o("dl",{class:"fields figures-list",
children:[o(vi,{name:"most events in the global queue",value:_i(e.countLimit,K)}),o(vi,{name:"highest age, in days",value:_i(
e.ageLimitDays,K)}),o(vi,{name:"largest request",value:_i(e.bodyBytes,Vt)}),o(vi,{name:"most events in one request",value:_i(
e.batchEvents,K)}),o(vi,{name:"most connections",value:_i(e.connections,K)}),o(vi,{name:"most waiting readers",value:_i(
e.waiting,K)}),o(vi,{name:"requests a second",value:_i(e.requestsPerSecond,K)})]})}function Fm({field:e}){return o("tr",
{children:[o("th",{scope:"row",children:o("code",{children:e.key})}),o("td",{children:e.type}),o("td",{children:e.required?
"required":"optional"}),o("td",{class:"figure",children:e.mostBytes?`${K(e.mostBytes)} B`:"–"}),o("td",{class:"wide",
children:e.help??""})]})}function zm({name:e,summary:t,fields:n}){let i=n.length===1?"1 field":`${n.length} fields`;return o(
"details",{children:[o("summary",{children:[o(Mn,{name:e})," ",o("span",{class:"muted",children:t?`${t}, ${i}`:i})]}),o(
qo,{label:`Fields of ${e}`,children:o("table",{class:"data",children:[o("thead",{children:o("tr",{children:[o("th",{scope:"\
col",children:"field"}),o("th",{scope:"col",children:"type"}),o("th",{scope:"col",children:"presence"}),o("th",{scope:"c\
ol",children:"longest"}),o("th",{scope:"col",children:"meaning"})]})}),o("tbody",{children:n.map(r=>o(Fm,{field:r},r.key))})]})})]})}
function ac(){let e=ze.value,t=Jt.value;return o("div",{class:"columns",children:[o("section",{class:"card","aria-labell\
edby":"near-title",children:[o("h2",{id:"near-title",children:"How near they are"}),e?o(Wo,{now:e}):o("p",{class:"muted",
children:"Waiting for figures …"})]}),o("section",{class:"card","aria-labelledby":"limits-title",children:[o("h2",{id:"\
limits-title",children:"Limits in force"}),t?o(Im,{known:t}):o("p",{class:"muted",children:"Waiting for the limits …"})]}),
o("section",{class:"card span","aria-labelledby":"kinds-title",children:[o("h2",{id:"kinds-title",children:"What an even\
t may hold"}),Object.entries(t?.kinds??{}).map(([n,{summary:i,fields:r}])=>o(zm,{name:n,summary:i,fields:r},n))]})]})}function uc(){let[e,t]=It(""),[n,i]=It(!1),r=Re(null);return ke(()=>r.current?.focus(),[]),o("form",{class:"log-in card",
onSubmit:async a=>{a.preventDefault(),i(!0),await mu(e),i(!1),r.current?.select()},children:[o("h2",{children:"Log in"}),
o("label",{for:"token",children:"Token"}),o("input",{id:"token",ref:r,type:"password",autocomplete:"off",spellcheck:!1,required:!0,
value:e,"aria-invalid":Ki.value!=="","aria-describedby":"token-refusal token-help",onInput:a=>t(a.currentTarget.value)}),
o("p",{id:"token-refusal",class:"refusal",role:"alert",children:Ki.value}),o("button",{type:"submit",class:"primary",disabled:n,
children:"Log in"}),o("p",{id:"token-help",class:"muted",children:["The server's administrator makes one with",o("br",{}),
o("code",{children:"eventctl token add NAME --role read"}),o("br",{}),"It is kept until this tab is closed."]})]})}var Hm="uplot",Vm="u-hz",qm="u-vt",Wm="u-title",Bm="u-wrap",Um="u-under",jm="u-over",Km="u-axis",yi="u-off",Gm="u-select",
Ym="u-cursor-x",Qm="u-cursor-y",Jm="u-cursor-pt",Zm="u-legend",Xm="u-live",eh="u-inline",th="u-series",nh="u-marker",cc="\
u-label",ih="u-value",qr="width",Wr="height";var fc="bottom",er="left",ds="right",Ps="#000",dc=Ps+"0",ps="mousemove",pc="mousedown",ms="mouseup",mc="mouseenter",hc="\
mouseleave",gc="dblclick",rh="resize",oh="scroll",vc="change",Go="dppxchange",As="--",sr=typeof window<"u",bs=sr?document:
null,nr=sr?window:null,lh=sr?navigator:null,ue,Bo;function ws(){let e=devicePixelRatio;ue!=e&&(ue=e,Bo&&xs(vc,Bo,ws),Bo=
matchMedia(`(min-resolution: ${ue-.001}dppx) and (max-resolution: ${ue+.001}dppx)`),xi(vc,Bo,ws),nr.dispatchEvent(new CustomEvent(
Go)))}function Ct(e,t){if(t!=null){let n=e.classList;!n.contains(t)&&n.add(t)}}function ys(e,t){let n=e.classList;n.contains(
t)&&n.remove(t)}function Se(e,t,n){e.style[t]=n+"px"}function nn(e,t,n,i){let r=bs.createElement(e);return t!=null&&Ct(r,
t),n?.insertBefore(r,i),r}function qt(e,t){return nn("div",e,t)}var _c=new WeakMap;function gn(e,t,n,i,r){let l="transla\
te("+t+"px,"+n+"px)",a=_c.get(e);l!=a&&(e.style.transform=l,_c.set(e,l),t<0||n<0||t>i||n>r?Ct(e,yi):ys(e,yi))}var bc=new WeakMap;
function wc(e,t,n){let i=t+n,r=bc.get(e);i!=r&&(bc.set(e,i),e.style.background=t,e.style.borderColor=n)}var yc=new WeakMap;
function xc(e,t,n,i){let r=t+""+n,l=yc.get(e);r!=l&&(yc.set(e,r),e.style.height=n+"px",e.style.width=t+"px",e.style.marginLeft=
i?-t/2+"px":0,e.style.marginTop=i?-n/2+"px":0)}var $s={passive:!0},sh={...$s,capture:!0};function xi(e,t,n,i){t.addEventListener(
e,n,i?sh:$s)}function xs(e,t,n,i){t.removeEventListener(e,n,$s)}sr&&ws();function rn(e,t,n,i){let r;n=n||0,i=i||t.length-
1;let l=i<=2147483647;for(;i-n>1;)r=l?n+i>>1:Pt((n+i)/2),t[r]<e?n=r:i=r;return e-t[n]<=t[i]-e?n:i}function Qc(e){return(n,i,r)=>{
let l=-1,a=-1;for(let c=i;c<=r;c++)if(e(n[c])){l=c;break}for(let c=r;c>=i;c--)if(e(n[c])){a=c;break}return[l,a]}}var Jc=e=>e!=
null,Zc=e=>e!=null&&e>0,Jo=Qc(Jc),ah=Qc(Zc);function uh(e,t,n,i=0,r=!1){let l=r?ah:Jo,a=r?Zc:Jc;[t,n]=l(e,t,n);let c=e[t],
d=e[t];if(t>-1)if(i==1)c=e[t],d=e[n];else if(i==-1)c=e[n],d=e[t];else for(let m=t;m<=n;m++){let h=e[m];a(h)&&(h<c?c=h:h>
d&&(d=h))}return[c??ge,d??-ge]}function Zo(e,t,n,i){let r=Tc(e),l=Tc(t);e==t&&(r==-1?(e*=n,t/=n):(e/=n,t*=n));let a=n==10?
An:Xc,c=r==1?Pt:Wt,d=l==1?Wt:Pt,m=c(a(Ge(e))),h=d(a(Ge(t))),v=ir(n,m),w=ir(n,h);return n==10&&(m<0&&(v=ve(v,-m)),h<0&&(w=
ve(w,-h))),i||n==2?(e=v*r,t=w*l):(e=rf(e,v),t=Xo(t,w)),[e,t]}function Ds(e,t,n,i){let r=Zo(e,t,n,i);return e==0&&(r[0]=0),
t==0&&(r[1]=0),r}var Ls=.1,kc={mode:3,pad:Ls},Ur={pad:0,soft:null,mode:0},ch={min:Ur,max:Ur};function Yo(e,t,n,i){return el(
n)?Sc(e,t,n):(Ur.pad=n,Ur.soft=i?0:null,Ur.mode=i?3:0,Sc(e,t,ch))}function se(e,t){return e??t}function fh(e,t,n){for(t=
se(t,0),n=se(n,e.length-1);t<=n;){if(e[t]!=null)return!0;t++}return!1}function Sc(e,t,n){let i=n.min,r=n.max,l=se(i.pad,
0),a=se(r.pad,0),c=se(i.hard,-ge),d=se(r.hard,ge),m=se(i.soft,ge),h=se(r.soft,-ge),v=se(i.mode,0),w=se(r.mode,0),_=t-e,S=An(
_),E=vt(Ge(e),Ge(t)),M=An(E),A=Ge(M-S);(_<1e-24||A>10)&&(_=0,(e==0||t==0)&&(_=1e-24,v==2&&m!=ge&&(l=0),w==2&&h!=-ge&&(a=
0)));let y=_||E||1e3,$=An(y),k=ir(10,Pt($)),Q=y*(_==0?e==0?.1:1:l),O=ve(rf(e-Q,k/10),24),J=e>=m&&(v==1||v==3&&O<=m||v==2&&
O>=m)?m:ge,W=vt(c,O<J&&e>=J?J:on(J,O)),X=y*(_==0?t==0?.1:1:a),q=ve(Xo(t+X,k/10),24),P=t<=h&&(w==1||w==3&&q>=h||w==2&&q<=
h)?h:-ge,B=on(d,q>P&&t<=P?P:vt(P,q));return W==B&&W==0&&(B=100),[W,B]}var dh=new Intl.NumberFormat(sr?lh.language:"en-US"),
Ns=e=>dh.format(e),At=Math,Ko=At.PI,Ge=At.abs,Pt=At.floor,Ke=At.round,Wt=At.ceil,on=At.min,vt=At.max,ir=At.pow,Tc=At.sign,
An=At.log10,Xc=At.log2,ph=(e,t=1)=>At.sinh(e)*t,hs=(e,t=1)=>At.asinh(e/t),ge=1/0;function Ec(e){return(An((e^e>>31)-(e>>
31))|0)+1}function ks(e,t,n){return on(vt(e,t),n)}function ef(e){return typeof e=="function"}function ne(e){return ef(e)?
e:()=>e}var mh=()=>{},tf=e=>e,nf=(e,t)=>t,hh=e=>null,Mc=e=>!0,Cc=(e,t)=>e==t,gh=/\.\d*?(?=9{6,}|0{6,})/gm,ki=e=>{if(lf(e)||
Gn.has(e))return e;let t=`${e}`,n=t.match(gh);if(n==null)return e;let i=n[0].length-1;if(t.indexOf("e-")!=-1){let[r,l]=t.
split("e");return+`${ki(r)}e${l}`}return ve(e,i)};function bi(e,t){return ki(ve(ki(e/t))*t)}function Xo(e,t){return ki(Wt(
ki(e/t))*t)}function rf(e,t){return ki(Pt(ki(e/t))*t)}function ve(e,t=0){if(lf(e))return e;let n=10**t,i=e*n*(1+Number.EPSILON);
return Ke(i)/n}var Gn=new Map;function of(e){return((""+e).split(".")[1]||"").length}function Kr(e,t,n,i){let r=[],l=i.map(
of);for(let a=t;a<n;a++){let c=Ge(a),d=ve(ir(e,a),c);for(let m=0;m<i.length;m++){let h=e==10?+`${i[m]}e${a}`:i[m]*d,v=(a>=
0?0:c)+(a>=l[m]?0:l[m]),w=e==10?h:ve(h,v);r.push(w),Gn.set(w,v)}}return r}var jr={},Rs=[],rr=[null,null],Kn=Array.isArray,
lf=Number.isInteger,vh=e=>e===void 0;function Pc(e){return typeof e=="string"}function el(e){let t=!1;if(e!=null){let n=e.
constructor;t=n==null||n==Object}return t}function _h(e){return e!=null&&typeof e=="object"}var bh=Object.getPrototypeOf(
Uint8Array),sf="__proto__";function or(e,t=el){let n;if(Kn(e)){let i=e.find(r=>r!=null);if(Kn(i)||t(i)){n=Array(e.length);
for(let r=0;r<e.length;r++)n[r]=or(e[r],t)}else n=e.slice()}else if(e instanceof bh)n=e.slice();else if(t(e)){n={};for(let i in e)
i!=sf&&(n[i]=or(e[i],t))}else n=e;return n}function Ve(e){let t=arguments;for(let n=1;n<t.length;n++){let i=t[n];for(let r in i)
r!=sf&&(el(e[r])?Ve(e[r],or(i[r])):e[r]=or(i[r]))}return e}var wh=0,yh=1,xh=2;function kh(e,t,n){for(let i=0,r,l=-1;i<t.
length;i++){let a=t[i];if(a>l){for(r=a-1;r>=0&&e[r]==null;)e[r--]=null;for(r=a+1;r<n&&e[r]==null;)e[l=r++]=null}}}function Sh(e,t){
if(Mh(e)){let a=e[0].slice();for(let c=1;c<e.length;c++)a.push(...e[c].slice(1));return Ch(a[0])||(a=Eh(a)),a}let n=new Set;
for(let a=0;a<e.length;a++){let d=e[a][0],m=d.length;for(let h=0;h<m;h++)n.add(d[h])}let i=[Array.from(n).sort((a,c)=>a-
c)],r=i[0].length,l=new Map;for(let a=0;a<r;a++)l.set(i[0][a],a);for(let a=0;a<e.length;a++){let c=e[a],d=c[0];for(let m=1;m<
c.length;m++){let h=c[m],v=Array(r).fill(void 0),w=t?t[a][m]:yh,_=[];for(let S=0;S<h.length;S++){let E=h[S],M=l.get(d[S]);
E===null?w!=wh&&(v[M]=E,w==xh&&_.push(M)):v[M]=E}kh(v,_,r),i.push(v)}}return i}var Th=typeof queueMicrotask>"u"?e=>Promise.
resolve().then(e):queueMicrotask;function Eh(e){let t=e[0],n=t.length,i=Array(n);for(let l=0;l<i.length;l++)i[l]=l;i.sort(
(l,a)=>t[l]-t[a]);let r=[];for(let l=0;l<e.length;l++){let a=e[l],c=Array(n);for(let d=0;d<n;d++)c[d]=a[i[d]];r.push(c)}
return r}function Mh(e){let t=e[0][0],n=t.length;for(let i=1;i<e.length;i++){let r=e[i][0];if(r.length!=n)return!1;if(r!=
t){for(let l=0;l<n;l++)if(r[l]!=t[l])return!1}}return!0}function Ch(e,t=100){let n=e.length;if(n<=1)return!0;let i=0,r=n-
1;for(;i<=r&&e[i]==null;)i++;for(;r>=i&&e[r]==null;)r--;if(r<=i)return!0;let l=vt(1,Pt((r-i+1)/t));for(let a=e[i],c=i+l;c<=
r;c+=l){let d=e[c];if(d!=null){if(d<=a)return!1;a=d}}return!0}var af=["January","February","March","April","May","June",
"July","August","September","October","November","December"],uf=["Sunday","Monday","Tuesday","Wednesday","Thursday","Fri\
day","Saturday"];function cf(e){return e.slice(0,3)}var Ph=uf.map(cf),Ah=af.map(cf),$h={MMMM:af,MMM:Ah,WWWW:uf,WWW:Ph};function Vr(e){
return(e<10?"0":"")+e}function Dh(e){return(e<10?"00":e<100?"0":"")+e}var Lh={YYYY:e=>e.getFullYear(),YY:e=>(e.getFullYear()+
"").slice(2),MMMM:(e,t)=>t.MMMM[e.getMonth()],MMM:(e,t)=>t.MMM[e.getMonth()],MM:e=>Vr(e.getMonth()+1),M:e=>e.getMonth()+
1,DD:e=>Vr(e.getDate()),D:e=>e.getDate(),WWWW:(e,t)=>t.WWWW[e.getDay()],WWW:(e,t)=>t.WWW[e.getDay()],HH:e=>Vr(e.getHours()),
H:e=>e.getHours(),h:e=>{let t=e.getHours();return t==0?12:t>12?t-12:t},AA:e=>e.getHours()>=12?"PM":"AM",aa:e=>e.getHours()>=
12?"pm":"am",a:e=>e.getHours()>=12?"p":"a",mm:e=>Vr(e.getMinutes()),m:e=>e.getMinutes(),ss:e=>Vr(e.getSeconds()),s:e=>e.
getSeconds(),fff:e=>Dh(e.getMilliseconds())};function Os(e,t){t=t||$h;let n=[],i=/\{([a-z]+)\}|[^{]+/gi,r;for(;r=i.exec(
e);)n.push(r[0][0]=="{"?Lh[r[1]]:r[0]);return l=>{let a="";for(let c=0;c<n.length;c++)a+=typeof n[c]=="string"?n[c]:n[c](
l,t);return a}}var Nh=new Intl.DateTimeFormat().resolvedOptions().timeZone;function Rh(e,t){let n;return t=="UTC"||t=="E\
tc/UTC"?n=new Date(+e+e.getTimezoneOffset()*6e4):t==Nh?n=e:(n=new Date(e.toLocaleString("en-US",{timeZone:t})),n.setMilliseconds(
e.getMilliseconds())),n}var ff=e=>e%1==0,Qo=[1,2,2.5,5],Oh=Kr(10,-32,0,Qo),df=Kr(10,0,32,Qo),Ih=df.filter(ff),wi=Oh.concat(
df),Is=`
`,pf="{YYYY}",Ac=Is+pf,mf="{M}/{D}",Br=Is+mf,Uo=Br+"/{YY}",hf="{aa}",Fh="{h}:{mm}",tr=Fh+hf,$c=Is+tr,Dc=":{ss}",fe=null;
function gf(e){let t=e*1e3,n=t*60,i=n*60,r=i*24,l=r*30,a=r*365,d=(e==1?Kr(10,0,3,Qo).filter(ff):Kr(10,-3,0,Qo)).concat([
t,t*5,t*10,t*15,t*30,n,n*5,n*10,n*15,n*30,i,i*2,i*3,i*4,i*6,i*8,i*12,r,r*2,r*3,r*4,r*5,r*6,r*7,r*8,r*9,r*10,r*15,l,l*2,l*
3,l*4,l*6,a,a*2,a*5,a*10,a*25,a*50,a*100]),m=[[a,pf,fe,fe,fe,fe,fe,fe,1],[r*28,"{MMM}",Ac,fe,fe,fe,fe,fe,1],[r,mf,Ac,fe,
fe,fe,fe,fe,1],[i,"{h}"+hf,Uo,fe,Br,fe,fe,fe,1],[n,tr,Uo,fe,Br,fe,fe,fe,1],[t,Dc,Uo+" "+tr,fe,Br+" "+tr,fe,$c,fe,1],[e,Dc+
".{fff}",Uo+" "+tr,fe,Br+" "+tr,fe,$c,fe,1]];function h(v){return(w,_,S,E,M,A)=>{let y=[],$=M>=a,k=M>=l&&M<a,Q=v(S),O=ve(
Q*e,3),J=gs(Q.getFullYear(),$?0:Q.getMonth(),k||$?1:Q.getDate()),W=ve(J*e,3);if(k||$){let X=k?M/l:0,q=$?M/a:0,P=O==W?O:ve(
gs(J.getFullYear()+q,J.getMonth()+X,1)*e,3),B=new Date(Ke(P/e)),L=B.getFullYear(),G=B.getMonth();for(let V=0;P<=E;V++){let ie=gs(
L+q*V,G+X*V,1),H=ie-v(ve(ie*e,3));P=ve((+ie+H)*e,3),P<=E&&y.push(P)}}else{let X=M>=r?r:M,q=Pt(S)-Pt(O),P=W+q+Xo(O-W,X);y.
push(P);let B=v(P),L=B.getHours()+B.getMinutes()/n+B.getSeconds()/i,G=M/i,V=w.axes[_]._space,ie=A/V;for(;P=ve(P+M,e==1?0:
3),!(P>E);)if(G>1){let H=Pt(ve(L+G,6))%24,oe=v(P).getHours()-H;oe>1&&(oe=-1),P-=oe*i,L=(L+G)%24;let pe=y[y.length-1];ve(
(P-pe)/M,3)*ie>=.7&&y.push(P)}else y.push(P)}return y}}return[d,m,h]}var[zh,Hh,Vh]=gf(1),[qh,Wh,Bh]=gf(.001);Kr(2,-53,53,
[1]);function Lc(e,t){return e.map(n=>n.map((i,r)=>r==0||r==8||i==null?i:t(r==1||n[8]==0?i:n[1]+i)))}function Nc(e,t){return(n,i,r,l,a)=>{
let c=t.find(S=>a>=S[0])||t[t.length-1],d,m,h,v,w,_;return i.map(S=>{let E=e(S),M=E.getFullYear(),A=E.getMonth(),y=E.getDate(),
$=E.getHours(),k=E.getMinutes(),Q=E.getSeconds(),O=M!=d&&c[2]||A!=m&&c[3]||y!=h&&c[4]||$!=v&&c[5]||k!=w&&c[6]||Q!=_&&c[7]||
c[1];return d=M,m=A,h=y,v=$,w=k,_=Q,O(E)})}}function Uh(e,t){let n=Os(t);return(i,r,l,a,c)=>r.map(d=>n(e(d)))}function gs(e,t,n){
return new Date(e,t,n)}function Rc(e,t){return t(e)}var jh="{YYYY}-{MM}-{DD} {h}:{mm}{aa}";function Oc(e,t){return(n,i,r,l)=>l==
null?As:t(e(i))}function Kh(e,t){let n=e.series[t];return n.width?n.stroke(e,t):n.points.width?n.points.stroke(e,t):null}
function Gh(e,t){return e.series[t].fill(e,t)}var Yh={show:!0,live:!0,isolate:!1,mount:mh,markers:{show:!0,width:2,stroke:Kh,
fill:Gh,dash:"solid"},idx:null,idxs:null,values:[]};function Qh(e,t){let n=e.cursor.points,i=qt(),r=n.size(e,t);Se(i,qr,
r),Se(i,Wr,r);let l=r/-2;Se(i,"marginLeft",l),Se(i,"marginTop",l);let a=n.width(e,t,r);return a&&Se(i,"borderWidth",a),i}
function Jh(e,t){let n=e.series[t].points;return n._fill||n._stroke}function Zh(e,t){let n=e.series[t].points;return n._stroke||
n._fill}function Xh(e,t){return e.series[t].points.size}var vs=[0,0];function eg(e,t,n){return vs[0]=t,vs[1]=n,vs}function jo(e,t,n,i=!0){
return r=>{r.button==0&&(!i||r.target==t)&&n(r)}}function _s(e,t,n,i=!0){return r=>{(!i||r.target==t)&&n(r)}}var tg={show:!0,
x:!0,y:!0,lock:!1,move:eg,points:{one:!1,show:Qh,size:Xh,width:0,stroke:Zh,fill:Jh},bind:{mousedown:jo,mouseup:jo,click:jo,
dblclick:jo,mousemove:_s,mouseleave:_s,mouseenter:_s},drag:{setScale:!0,x:!0,y:!1,dist:0,uni:null,click:(e,t)=>{t.stopPropagation(),
t.stopImmediatePropagation()},_x:!1,_y:!1},focus:{dist:(e,t,n,i,r)=>i-r,prox:-1,bias:0},hover:{skip:[void 0],prox:null,bias:0},
left:-10,top:-10,idx:null,dataIdx:null,idxs:null,event:null},vf={show:!0,stroke:"rgba(0,0,0,0.07)",width:2},Fs=Ve({},vf,
{filter:nf}),_f=Ve({},Fs,{size:10}),bf=Ve({},vf,{show:!1}),zs='12px system-ui, -apple-system, "Segoe UI", Roboto, "Helve\
tica Neue", Arial, "Noto Sans", sans-serif, "Apple Color Emoji", "Segoe UI Emoji", "Segoe UI Symbol", "Noto Color Emoji"',
wf="bold "+zs,yf=1.5,Ic={show:!0,scale:"x",stroke:Ps,space:50,gap:5,alignTo:1,size:50,labelGap:0,labelSize:30,labelFont:wf,
side:2,grid:Fs,ticks:_f,border:bf,font:zs,lineGap:yf,rotate:0},ng="Value",ig="Time",Fc={show:!0,scale:"x",auto:!1,sorted:1,
min:ge,max:-ge,idxs:[]};function rg(e,t,n,i,r){return t.map(l=>l==null?"":Ns(l))}function og(e,t,n,i,r,l,a){let c=[],d=Gn.
get(r)||0;n=a?n:ve(Xo(n,r),d);for(let m=n;m<=i;m=ve(m+r,d))c.push(Object.is(m,-0)?0:m);return c}function Ss(e,t,n,i,r,l,a){
let c=[],d=e.scales[e.axes[t].scale].log,m=d==10?An:Xc,h=Pt(m(n));r=ir(d,h),d==10&&(r=wi[rn(r,wi)]);let v=n,w=r*d;d==10&&
(w=wi[rn(w,wi)]);do c.push(v),v=v+r,d==10&&!Gn.has(v)&&(v=ve(v,Gn.get(r))),v>=w&&(r=v,w=r*d,d==10&&(w=wi[rn(w,wi)]));while(v<=
i);return c}function lg(e,t,n,i,r,l,a){let d=e.scales[e.axes[t].scale].asinh,m=i>d?Ss(e,t,vt(d,n),i,r):[d],h=i>=0&&n<=0?
[0]:[];return(n<-d?Ss(e,t,vt(d,-i),-n,r):[d]).reverse().map(w=>-w).concat(h,m)}var xf=/./,sg=/[12357]/,ag=/[125]/,zc=/1/,
Ts=(e,t,n,i)=>e.map((r,l)=>t==4&&r==0||l%i==0&&n.test(r.toExponential()[r<0?1:0])?r:null);function ug(e,t,n,i,r){let l=e.
axes[n],a=l.scale,c=e.scales[a],d=e.valToPos,m=l._space,h=d(10,a),v=d(9,a)-h>=m?xf:d(7,a)-h>=m?sg:d(5,a)-h>=m?ag:zc;if(v==
zc){let w=Ge(d(1,a)-h);if(w<m)return Ts(t.slice().reverse(),c.distr,v,Wt(m/w)).reverse()}return Ts(t,c.distr,v,1)}function cg(e,t,n,i,r){
let l=e.axes[n],a=l.scale,c=l._space,d=e.valToPos,m=Ge(d(1,a)-d(2,a));return m<c?Ts(t.slice().reverse(),3,xf,Wt(c/m)).reverse():
t}function fg(e,t,n,i){return i==null?As:t==null?"":Ns(t)}var Hc={show:!0,scale:"y",stroke:Ps,space:30,gap:5,alignTo:1,size:50,
labelGap:0,labelSize:30,labelFont:wf,side:3,grid:Fs,ticks:_f,border:bf,font:zs,lineGap:yf,rotate:0};function dg(e,t){let n=3+
(e||1)*2;return ve(n*t,3)}function pg(e,t){let{scale:n,idxs:i}=e.series[0],r=e._data[0],l=e.valToPos(r[i[0]],n,!0),a=e.valToPos(
r[i[1]],n,!0),c=Ge(a-l),d=e.series[t],m=c/(d.points.space*ue);return i[1]-i[0]<=m}var Vc={scale:null,auto:!0,sorted:0,min:ge,
max:-ge},kf=(e,t,n,i,r)=>r,qc={show:!0,auto:!0,sorted:0,gaps:kf,alpha:1,facets:[Ve({},Vc,{scale:"x"}),Ve({},Vc,{scale:"y"})]},
Wc={scale:"y",auto:!0,sorted:0,show:!0,spanGaps:!1,gaps:kf,alpha:1,points:{show:pg,filter:null},values:null,min:ge,max:-ge,
idxs:[],path:null,clip:null};function mg(e,t,n,i,r){return n/10}var Sf={time:!0,auto:!0,distr:1,log:10,asinh:1,min:null,
max:null,dir:1,ori:0},hg=Ve({},Sf,{time:!1,ori:1}),Bc={};function Tf(e,t){let n=Bc[e];return n||(n={key:e,plots:[],sub(i){
n.plots.push(i)},unsub(i){n.plots=n.plots.filter(r=>r!=i)},pub(i,r,l,a,c,d,m){for(let h=0;h<n.plots.length;h++)n.plots[h]!=
r&&n.plots[h].pub(i,r,l,a,c,d,m)}},e!=null&&(Bc[e]=n)),n}var lr=1,Es=2;function Si(e,t,n){let i=e.mode,r=e.series[t],l=i==
2?e._data[t]:e._data,a=e.scales,c=e.bbox,d=l[0],m=i==2?l[1]:l[t],h=i==2?a[r.facets[0].scale]:a[e.series[0].scale],v=i==2?
a[r.facets[1].scale]:a[r.scale],w=c.left,_=c.top,S=c.width,E=c.height,M=e.valToPosH,A=e.valToPosV;return h.ori==0?n(r,d,
m,h,v,M,A,w,_,S,E,nl,ar,rl,Mf,Pf):n(r,d,m,h,v,A,M,_,w,E,S,il,ur,qs,Cf,Af)}function Hs(e,t){let n=0,i=0,r=se(e.bands,Rs);
for(let l=0;l<r.length;l++){let a=r[l];a.series[0]==t?n=a.dir:a.series[1]==t&&(a.dir==1?i|=1:i|=2)}return[n,i==1?-1:i==2?
1:i==3?2:0]}function gg(e,t,n,i,r){let l=e.mode,a=e.series[t],c=l==2?a.facets[1].scale:a.scale,d=e.scales[c];return r==-1?
d.min:r==1?d.max:d.distr==3?d.dir==1?d.min:d.max:0}function $n(e,t,n,i,r,l){return Si(e,t,(a,c,d,m,h,v,w,_,S,E,M)=>{let A=a.
pxRound,y=m.dir*(m.ori==0?1:-1),$=m.ori==0?ar:ur,k,Q;y==1?(k=n,Q=i):(k=i,Q=n);let O=A(v(c[k],m,E,_)),J=A(w(d[k],h,M,S)),
W=A(v(c[Q],m,E,_)),X=A(w(l==1?h.max:h.min,h,M,S)),q=new Path2D(r);return $(q,W,X),$(q,O,X),$(q,O,J),q})}function tl(e,t,n,i,r,l){
let a=null;if(e.length>0){a=new Path2D;let c=t==0?rl:qs,d=n;for(let v=0;v<e.length;v++){let w=e[v];if(w[1]>w[0]){let _=w[0]-
d;_>0&&c(a,d,i,_,i+l),d=w[1]}}let m=n+r-d,h=10;m>0&&c(a,d,i-h/2,m,i+l+h)}return a}function vg(e,t,n){let i=e[e.length-1];
i&&i[0]==t?i[1]=n:e.push([t,n])}function Vs(e,t,n,i,r,l,a){let c=[],d=e.length;for(let m=r==1?n:i;m>=n&&m<=i;m+=r)if(t[m]===
null){let v=m,w=m;if(r==1)for(;++m<=i&&t[m]===null;)w=m;else for(;--m>=n&&t[m]===null;)w=m;let _=l(e[v]),S=w==v?_:l(e[w]),
E=v-r;_=a<=0&&E>=0&&E<d?l(e[E]):_;let A=w+r;S=a>=0&&A>=0&&A<d?l(e[A]):S,S>=_&&c.push([_,S])}return c}function Uc(e){return e==
0?tf:e==1?Ke:t=>bi(t,e)}function Ef(e){let t=e==0?nl:il,n=e==0?(r,l,a,c,d,m)=>{r.arcTo(l,a,c,d,m)}:(r,l,a,c,d,m)=>{r.arcTo(
a,l,d,c,m)},i=e==0?(r,l,a,c,d)=>{r.rect(l,a,c,d)}:(r,l,a,c,d)=>{r.rect(a,l,d,c)};return(r,l,a,c,d,m=0,h=0)=>{m==0&&h==0?
i(r,l,a,c,d):(m=on(m,c/2,d/2),h=on(h,c/2,d/2),t(r,l+m,a),n(r,l+c,a,l+c,a+d,m),n(r,l+c,a+d,l,a+d,h),n(r,l,a+d,l,a,h),n(r,
l,a,l+c,a,m),r.closePath())}}var nl=(e,t,n)=>{e.moveTo(t,n)},il=(e,t,n)=>{e.moveTo(n,t)},ar=(e,t,n)=>{e.lineTo(t,n)},ur=(e,t,n)=>{
e.lineTo(n,t)},rl=Ef(0),qs=Ef(1),Mf=(e,t,n,i,r,l)=>{e.arc(t,n,i,r,l)},Cf=(e,t,n,i,r,l)=>{e.arc(n,t,i,r,l)},Pf=(e,t,n,i,r,l,a)=>{
e.bezierCurveTo(t,n,i,r,l,a)},Af=(e,t,n,i,r,l,a)=>{e.bezierCurveTo(n,t,r,i,a,l)};function $f(e){return(t,n,i,r,l)=>Si(t,
n,(a,c,d,m,h,v,w,_,S,E,M)=>{let{pxRound:A,points:y}=a,$,k;m.ori==0?($=nl,k=Mf):($=il,k=Cf);let Q=ve(y.width*ue,3),O=(y.size-
y.width)/2*ue,J=ve(O*2,3),W=new Path2D,X=new Path2D,{left:q,top:P,width:B,height:L}=t.bbox;rl(X,q-J,P-J,B+J*2,L+J*2);let G=V=>{
if(d[V]!=null){let ie=A(v(c[V],m,E,_)),H=A(w(d[V],h,M,S));$(W,ie+O,H),k(W,ie,H,O,0,Ko*2)}};if(l)l.forEach(G);else for(let V=i;V<=
r;V++)G(V);return{stroke:Q>0?W:null,fill:W,clip:X,flags:lr|Es}})}function Df(e){return(t,n,i,r,l,a)=>{i!=r&&(l!=i&&a!=i&&
e(t,n,i),l!=r&&a!=r&&e(t,n,r),e(t,n,a))}}var _g=Df(ar),bg=Df(ur);function Lf(e){let t=se(e?.alignGaps,0);return(n,i,r,l)=>Si(
n,i,(a,c,d,m,h,v,w,_,S,E,M)=>{[r,l]=Jo(d,r,l);let A=a.pxRound,y=L=>A(v(L,m,E,_)),$=L=>A(w(L,h,M,S)),k,Q;m.ori==0?(k=ar,Q=
_g):(k=ur,Q=bg);let O=m.dir*(m.ori==0?1:-1),J={stroke:new Path2D,fill:null,clip:null,band:null,gaps:null,flags:lr},W=J.stroke,
X=!1;if(l-r>=E*4){let L=F=>n.posToVal(F,m.key,!0),G=null,V=null,ie,H,_t,Te=y(c[O==1?r:l]),oe=y(c[r]),pe=y(c[l]),ee=L(O==
1?oe+1:pe-1);for(let F=O==1?r:l;F>=r&&F<=l;F+=O){let qe=c[F],Ee=(O==1?qe<ee:qe>ee)?Te:y(qe),ce=d[F];Ee==Te?ce!=null?(H=ce,
G==null?(k(W,Ee,$(H)),ie=G=V=H):H<G?G=H:H>V&&(V=H)):ce===null&&(X=!0):(G!=null&&Q(W,Te,$(G),$(V),$(ie),$(H)),ce!=null?(H=
ce,k(W,Ee,$(H)),G=V=ie=H):(G=V=null,ce===null&&(X=!0)),Te=Ee,ee=L(Te+O))}G!=null&&G!=V&&_t!=Te&&Q(W,Te,$(G),$(V),$(ie),$(
H))}else for(let L=O==1?r:l;L>=r&&L<=l;L+=O){let G=d[L];G===null?X=!0:G!=null&&k(W,y(c[L]),$(G))}let[P,B]=Hs(n,i);if(a.fill!=
null||P!=0){let L=J.fill=new Path2D(W),G=a.fillTo(n,i,a.min,a.max,P),V=$(G),ie=y(c[r]),H=y(c[l]);O==-1&&([H,ie]=[ie,H]),
k(L,H,V),k(L,ie,V)}if(!a.spanGaps){let L=[];X&&L.push(...Vs(c,d,r,l,O,y,t)),J.gaps=L=a.gaps(n,i,r,l,L),J.clip=tl(L,m.ori,
_,S,E,M)}return B!=0&&(J.band=B==2?[$n(n,i,r,l,W,-1),$n(n,i,r,l,W,1)]:$n(n,i,r,l,W,B)),J})}function wg(e){let t=se(e.align,
1),n=se(e.ascDesc,!1),i=se(e.alignGaps,0),r=se(e.extend,!1);return(l,a,c,d)=>Si(l,a,(m,h,v,w,_,S,E,M,A,y,$)=>{[c,d]=Jo(v,
c,d);let k=m.pxRound,{left:Q,width:O}=l.bbox,J=oe=>k(S(oe,w,y,M)),W=oe=>k(E(oe,_,$,A)),X=w.ori==0?ar:ur,q={stroke:new Path2D,
fill:null,clip:null,band:null,gaps:null,flags:lr},P=q.stroke,B=w.dir*(w.ori==0?1:-1),L=W(v[B==1?c:d]),G=J(h[B==1?c:d]),V=G,
ie=G;r&&t==-1&&(ie=Q,X(P,ie,L)),X(P,G,L);for(let oe=B==1?c:d;oe>=c&&oe<=d;oe+=B){let pe=v[oe];if(pe==null)continue;let ee=J(
h[oe]),F=W(pe);t==1?X(P,ee,L):X(P,V,F),X(P,ee,F),L=F,V=ee}let H=V;r&&t==1&&(H=Q+O,X(P,H,L));let[_t,Te]=Hs(l,a);if(m.fill!=
null||_t!=0){let oe=q.fill=new Path2D(P),pe=m.fillTo(l,a,m.min,m.max,_t),ee=W(pe);X(oe,H,ee),X(oe,ie,ee)}if(!m.spanGaps){
let oe=[];oe.push(...Vs(h,v,c,d,B,J,i));let pe=m.width*ue/2,ee=n||t==1?pe:-pe,F=n||t==-1?-pe:pe;oe.forEach(qe=>{qe[0]+=ee,
qe[1]+=F}),q.gaps=oe=m.gaps(l,a,c,d,oe),q.clip=tl(oe,w.ori,M,A,y,$)}return Te!=0&&(q.band=Te==2?[$n(l,a,c,d,P,-1),$n(l,a,
c,d,P,1)]:$n(l,a,c,d,P,Te)),q})}function jc(e,t,n,i,r,l,a=ge){if(e.length>1){let c=null;for(let d=0,m=1/0;d<e.length;d++)
if(t[d]!==void 0){if(c!=null){let h=Ge(e[d]-e[c]);h<m&&(m=h,a=Ge(n(e[d],i,r,l)-n(e[c],i,r,l)))}c=d}}return a}function yg(e){
e=e||jr;let t=se(e.size,[.6,ge,1]),n=e.align||0,i=e.gap||0,r=e.radius;r=r==null?[0,0]:typeof r=="number"?[r,0]:r;let l=ne(
r),a=1-t[0],c=se(t[1],ge),d=se(t[2],1),m=se(e.disp,jr),h=se(e.each,_=>{}),{fill:v,stroke:w}=m;return(_,S,E,M)=>Si(_,S,(A,y,$,k,Q,O,J,W,X,q,P)=>{
let B=A.pxRound,L=n,G=i*ue,V=c*ue,ie=d*ue,H,_t;k.ori==0?[H,_t]=l(_,S):[_t,H]=l(_,S);let Te=k.dir*(k.ori==0?1:-1),oe=k.ori==
0?rl:qs,pe=k.ori==0?h:(R,_e,We,Ci,Jn,sn,Zn)=>{h(R,_e,We,Jn,Ci,Zn,sn)},ee=se(_.bands,Rs).find(R=>R.series[0]==S),F=ee!=null?
ee.dir:0,qe=A.fillTo(_,S,A.min,A.max,F),ct=B(J(qe,Q,P,X)),Ee,ce,Bt,kt=q,Ae=B(A.width*ue),ln=!1,vn=null,$t=null,Dn=null,Ti=null;
v!=null&&(Ae==0||w!=null)&&(ln=!0,vn=v.values(_,S,E,M),$t=new Map,new Set(vn).forEach(R=>{R!=null&&$t.set(R,new Path2D)}),
Ae>0&&(Dn=w.values(_,S,E,M),Ti=new Map,new Set(Dn).forEach(R=>{R!=null&&Ti.set(R,new Path2D)})));let{x0:Ei,size:fr}=m;if(Ei!=
null&&fr!=null){L=1,y=Ei.values(_,S,E,M),Ei.unit==2&&(y=y.map(We=>_.posToVal(W+We*q,k.key,!0)));let R=fr.values(_,S,E,M);
fr.unit==2?ce=R[0]*q:ce=O(R[0],k,q,W)-O(0,k,q,W),kt=jc(y,$,O,k,q,W,kt),Bt=kt-ce+G}else kt=jc(y,$,O,k,q,W,kt),Bt=kt*a+G,ce=
kt-Bt;Bt<1&&(Bt=0),Ae>=ce/2&&(Ae=0),Bt<5&&(B=tf);let Gr=Bt>0,Yn=kt-Bt-(Gr?Ae:0);ce=B(ks(Yn,ie,V)),Ee=(L==0?ce/2:L==Te?0:
ce)-L*Te*((L==0?G/2:0)+(Gr?Ae/2:0));let ft={stroke:null,fill:null,clip:null,band:null,gaps:null,flags:0},Mi=ln?null:new Path2D,
_n=null;if(ee!=null)_n=_.data[ee.series[1]];else{let{y0:R,y1:_e}=m;R!=null&&_e!=null&&($=_e.values(_,S,E,M),_n=R.values(
_,S,E,M))}let Qn=H*ce,Z=_t*ce;for(let R=Te==1?E:M;R>=E&&R<=M;R+=Te){let _e=$[R];if(_e==null)continue;if(_n!=null){let bt=_n[R]??
0;if(_e-bt==0)continue;ct=J(bt,Q,P,X)}let We=k.distr!=2||m!=null?y[R]:R,Ci=O(We,k,q,W),Jn=J(se(_e,qe),Q,P,X),sn=B(Ci-Ee),
Zn=B(vt(Jn,ct)),St=B(on(Jn,ct)),Dt=Zn-St;if(_e!=null){let bt=_e<0?Z:Qn,Ut=_e<0?Qn:Z;ln?(Ae>0&&Dn[R]!=null&&oe(Ti.get(Dn[R]),
sn,St+Pt(Ae/2),ce,vt(0,Dt-Ae),bt,Ut),vn[R]!=null&&oe($t.get(vn[R]),sn,St+Pt(Ae/2),ce,vt(0,Dt-Ae),bt,Ut)):oe(Mi,sn,St+Pt(
Ae/2),ce,vt(0,Dt-Ae),bt,Ut),pe(_,S,R,sn-Ae/2,St,ce+Ae,Dt)}}return Ae>0?ft.stroke=ln?Ti:Mi:ln||(ft._fill=A.width==0?A._fill:
A._stroke??A._fill,ft.width=0),ft.fill=ln?$t:Mi,ft})}function xg(e,t){let n=se(t?.alignGaps,0);return(i,r,l,a)=>Si(i,r,(c,d,m,h,v,w,_,S,E,M,A)=>{
[l,a]=Jo(m,l,a);let y=c.pxRound,$=H=>y(w(H,h,M,S)),k=H=>y(_(H,v,A,E)),Q,O,J;h.ori==0?(Q=nl,J=ar,O=Pf):(Q=il,J=ur,O=Af);let W=h.
dir*(h.ori==0?1:-1),X=$(d[W==1?l:a]),q=X,P=[],B=[];for(let H=W==1?l:a;H>=l&&H<=a;H+=W)if(m[H]!=null){let Te=d[H],oe=$(Te);
P.push(q=oe),B.push(k(m[H]))}let L={stroke:e(P,B,Q,J,O,y),fill:null,clip:null,band:null,gaps:null,flags:lr},G=L.stroke,[
V,ie]=Hs(i,r);if(c.fill!=null||V!=0){let H=L.fill=new Path2D(G),_t=c.fillTo(i,r,c.min,c.max,V),Te=k(_t);J(H,q,Te),J(H,X,
Te)}if(!c.spanGaps){let H=[];H.push(...Vs(d,m,l,a,W,$,n)),L.gaps=H=c.gaps(i,r,l,a,H),L.clip=tl(H,h.ori,S,E,M,A)}return ie!=
0&&(L.band=ie==2?[$n(i,r,l,a,G,-1),$n(i,r,l,a,G,1)]:$n(i,r,l,a,G,ie)),L})}function kg(e){return xg(Sg,e)}function Sg(e,t,n,i,r,l){
let a=e.length;if(a<2)return null;let c=new Path2D;if(n(c,e[0],t[0]),a==2)i(c,e[1],t[1]);else{let d=Array(a),m=Array(a-1),
h=Array(a-1),v=Array(a-1);for(let w=0;w<a-1;w++)h[w]=t[w+1]-t[w],v[w]=e[w+1]-e[w],m[w]=h[w]/v[w];d[0]=m[0];for(let w=1;w<
a-1;w++)m[w]===0||m[w-1]===0||m[w-1]>0!=m[w]>0?d[w]=0:(d[w]=3*(v[w-1]+v[w])/((2*v[w]+v[w-1])/m[w-1]+(v[w]+2*v[w-1])/m[w]),
isFinite(d[w])||(d[w]=0));d[a-1]=m[a-2];for(let w=0;w<a-1;w++)r(c,e[w]+v[w]/3,t[w]+d[w]*v[w]/3,e[w+1]-v[w]/3,t[w+1]-d[w+
1]*v[w]/3,e[w+1],t[w+1])}return c}var Ms=new Set;function Kc(){for(let e of Ms)e.syncRect(!0)}sr&&(xi(rh,nr,Kc),xi(oh,nr,
Kc,!0),xi(Go,nr,()=>{tt.pxRatio=ue}));var Tg=Lf(),Eg=$f();function Gc(e,t,n,i){return(i?[e[0],e[1]].concat(e.slice(2)):[
e[0]].concat(e.slice(1))).map((l,a)=>Cs(l,a,t,n))}function Mg(e,t){return e.map((n,i)=>i==0?{}:Ve({},t,n))}function Cs(e,t,n,i){
return Ve({},t==0?n:i,e)}function Nf(e,t,n){return t==null?rr:[t,n]}var Cg=Nf;function Pg(e,t,n){return t==null?rr:Yo(t,
n,Ls,!0)}function Rf(e,t,n,i){return t==null?rr:Zo(t,n,e.scales[i].log,!1)}var Ag=Rf;function Of(e,t,n,i){return t==null?
rr:Ds(t,n,e.scales[i].log,!1)}var $g=Of;function Dg(e,t,n,i,r){let l=vt(Ec(e),Ec(t)),a=t-e,c=rn(r/i*a,n);do{let d=n[c],m=i*
d/a;if(m>=r&&l+(d<5?Gn.get(d):0)<=17)return[d,m]}while(++c<n.length);return[0,0]}function Yc(e){let t,n;return e=e.replace(
/(\d+)px/,(i,r)=>(t=Ke((n=+r)*ue))+"px"),[e,t,n]}function Lg(e){e.show&&[e.font,e.labelFont].forEach(t=>{let n=ve(t[2]*ue,
1);t[0]=t[0].replace(/[0-9.]+px/,n+"px"),t[1]=n})}function tt(e,t,n){let i={mode:se(e.mode,1)},r=i.mode;function l(s,u,f,p){
let g=u.valToPct(s);return p+f*(u.dir==-1?1-g:g)}function a(s,u,f,p){let g=u.valToPct(s);return p+f*(u.dir==-1?g:1-g)}function c(s,u,f,p){
return u.ori==0?l(s,u,f,p):a(s,u,f,p)}i.valToPosH=l,i.valToPosV=a;let d=!1;i.status=0;let m=i.root=qt(Hm);if(e.id!=null&&
(m.id=e.id),Ct(m,e.class),e.title){let s=qt(Wm,m);s.textContent=e.title}let h=nn("canvas"),v=i.ctx=h.getContext("2d"),w=qt(
Bm,m);xi("click",w,s=>{s.target===S&&(we!=zi||Me!=Hi)&&it.click(i,s)},!0);let _=i.under=qt(Um,w);w.appendChild(h);let S=i.
over=qt(jm,w);e=or(e);let E=+se(e.pxAlign,1),M=Uc(E);(e.plugins||[]).forEach(s=>{s.opts&&(e=s.opts(i,e)||e)});let A=e.ms||
.001,y=i.series=r==1?Gc(e.series||[],Fc,Wc,!1):Mg(e.series||[null],qc),$=i.axes=Gc(e.axes||[],Ic,Hc,!0),k=i.scales={},Q=i.
bands=e.bands||[];Q.forEach(s=>{s.fill=ne(s.fill||null),s.dir=se(s.dir,-1)});let O=r==2?y[1].facets[0].scale:y[0].scale,
J={axes:cd,series:od},W=(e.drawOrder||["axes","series"]).map(s=>J[s]);function X(s){let u=s.distr==3?f=>An(f>0?f:s.clamp(
i,f,s.min,s.max,s.key)):s.distr==4?f=>hs(f,s.asinh):s.distr==100?f=>s.fwd(f):f=>f;return f=>{let p=u(f),{_min:g,_max:b}=s,
x=b-g;return(p-g)/x}}function q(s){let u=k[s];if(u==null){let f=(e.scales||jr)[s]||jr;if(f.from!=null){q(f.from);let p=Ve(
{},k[f.from],f,{key:s});p.valToPct=X(p),k[s]=p}else{u=k[s]=Ve({},s==O?Sf:hg,f),u.key=s;let p=u.time,g=u.range,b=Kn(g);if((s!=
O||r==2&&!p)&&(b&&(g[0]==null||g[1]==null)&&(g={min:g[0]==null?kc:{mode:1,hard:g[0],soft:g[0]},max:g[1]==null?kc:{mode:1,
hard:g[1],soft:g[1]}},b=!1),!b&&el(g))){let x=g;g=(T,C,D)=>C==null?rr:Yo(C,D,x)}u.range=ne(g||(p?Cg:s==O?u.distr==3?Ag:u.
distr==4?$g:Nf:u.distr==3?Rf:u.distr==4?Of:Pg)),u.auto=ne(b?!1:u.auto),u.clamp=ne(u.clamp||mg),u._min=u._max=null,u.valToPct=
X(u)}}}q("x"),q("y"),r==1&&y.forEach(s=>{q(s.scale)}),$.forEach(s=>{q(s.scale)});for(let s in e.scales)q(s);let P=k[O],B=P.
distr,L,G;P.ori==0?(Ct(m,Vm),L=l,G=a):(Ct(m,qm),L=a,G=l);let V={};for(let s in k){let u=k[s];(u.min!=null||u.max!=null)&&
(V[s]={min:u.min,max:u.max},u.min=u.max=null)}let ie=e.tzDate||(s=>new Date(Ke(s/A))),H=e.fmtDate||Os,_t=A==1?Vh(ie):Bh(
ie),Te=Nc(ie,Lc(A==1?Hh:Wh,H)),oe=Oc(ie,Rc(jh,H)),pe=[],ee=i.legend=Ve({},Yh,e.legend),F=i.cursor=Ve({},tg,{drag:{y:r==2}},
e.cursor),qe=ee.show,ct=F.show,Ee=ee.markers;ee.idxs=pe,Ee.width=ne(Ee.width),Ee.dash=ne(Ee.dash),Ee.stroke=ne(Ee.stroke),
Ee.fill=ne(Ee.fill);let ce,Bt,kt,Ae=[],ln=[],vn,$t=!1,Dn={};if(ee.live){let s=y[1]?y[1].values:null;$t=s!=null,vn=$t?s(i,
1,0):{_:0};for(let u in vn)Dn[u]=As}if(qe)if(ce=nn("table",Zm,m),kt=nn("tbody",null,ce),ee.mount(i,ce),$t){Bt=nn("thead",
null,ce,kt);let s=nn("tr",null,Bt);nn("th",null,s);for(var Ti in vn)nn("th",cc,s).textContent=Ti}else Ct(ce,eh),ee.live&&
Ct(ce,Xm);let Ei={show:!0},fr={show:!1};function Gr(s,u){if(u==0&&($t||!ee.live||r==2))return rr;let f=[],p=nn("tr",th,kt,
kt.childNodes[u]);Ct(p,s.class),s.show||Ct(p,yi);let g=nn("th",null,p);if(Ee.show){let T=qt(nh,g);if(u>0){let C=Ee.width(
i,u);C&&(T.style.border=C+"px "+Ee.dash(i,u)+" "+Ee.stroke(i,u)),T.style.background=Ee.fill(i,u)}}let b=qt(cc,g);s.label instanceof
HTMLElement?b.appendChild(s.label):b.textContent=s.label,u>0&&(Ee.show||(b.style.color=s.width>0?Ee.stroke(i,u):Ee.fill(
i,u)),ft("click",g,T=>{if(F._lock)return;ei(T);let C=y.indexOf(s);if((T.ctrlKey||T.metaKey)!=ee.isolate){let D=y.some((N,I)=>I>
0&&I!=C&&N.show);y.forEach((N,I)=>{I>0&&un(I,D?I==C?Ei:fr:Ei,!0,He.setSeries)})}else un(C,{show:!s.show},!0,He.setSeries)},
!1),Ai&&ft(mc,g,T=>{F._lock||(ei(T),un(y.indexOf(s),qi,!0,He.setSeries))},!1));for(var x in vn){let T=nn("td",ih,p);T.textContent=
"--",f.push(T)}return[p,f]}let Yn=new Map;function ft(s,u,f,p=!0){let g=Yn.get(u)||{},b=F.bind[s](i,u,f,p);b&&(xi(s,u,g[s]=
b),Yn.set(u,g))}function Mi(s,u,f){let p=Yn.get(u)||{};for(let g in p)(s==null||g==s)&&(xs(g,u,p[g]),delete p[g]);s==null&&
Yn.delete(u)}let _n=0,Qn=0,Z=0,R=0,_e=0,We=0,Ci=_e,Jn=We,sn=Z,Zn=R,St=0,Dt=0,bt=0,Ut=0;i.bbox={};let ll=!1,Yr=!1,Pi=!1,Xn=!1,
Qr=!1,Lt=!1;function sl(s,u,f){(f||s!=i.width||u!=i.height)&&js(s,u),Ri(!1),Pi=!0,Yr=!0,Oi()}function js(s,u){i.width=_n=
Z=s,i.height=Qn=R=u,_e=We=0,Zf(),Xf();let f=i.bbox;St=f.left=bi(_e*ue,.5),Dt=f.top=bi(We*ue,.5),bt=f.width=bi(Z*ue,.5),Ut=
f.height=bi(R*ue,.5)}let Yf=3;function Qf(){let s=!1,u=0;for(;!s;){u++;let f=ad(u),p=ud(u);s=u==Yf||f&&p,s||(js(i.width,
i.height),Yr=!0)}}function Jf({width:s,height:u}){sl(s,u)}i.setSize=Jf;function Zf(){let s=!1,u=!1,f=!1,p=!1;$.forEach((g,b)=>{
if(g.show&&g._show){let{side:x,_size:T}=g,C=x%2,D=g.label!=null?g.labelSize:0,N=T+D;N>0&&(C?(Z-=N,x==3?(_e+=N,p=!0):f=!0):
(R-=N,x==0?(We+=N,s=!0):u=!0))}}),ti[0]=s,ti[1]=f,ti[2]=u,ti[3]=p,Z-=Ln[1]+Ln[3],_e+=Ln[3],R-=Ln[2]+Ln[0],We+=Ln[0]}function Xf(){
let s=_e+Z,u=We+R,f=_e,p=We;function g(b,x){switch(b){case 1:return s+=x,s-x;case 2:return u+=x,u-x;case 3:return f-=x,f+
x;case 0:return p-=x,p+x}}$.forEach((b,x)=>{if(b.show&&b._show){let T=b.side;b._pos=g(T,b._size),b.label!=null&&(b._lpos=
g(T,b.labelSize))}})}if(F.dataIdx==null){let s=F.hover,u=s.skip=new Set(s.skip??[]);u.add(void 0);let f=s.prox=ne(s.prox),
p=s.bias??=0;F.dataIdx=(g,b,x,T)=>{if(b==0)return x;let C=x,D=f(g,b,x,T)??ge,N=D>=0&&D<ge,I=P.ori==0?Z:R,Y=F.left,ae=t[0],
le=t[b];if(u.has(le[x])){C=null;let te=null,j=null,z;if(p==0||p==-1)for(z=x;te==null&&z-- >0;)u.has(le[z])||(te=z);if(p==
0||p==1)for(z=x;j==null&&z++<le.length;)u.has(le[z])||(j=z);if(te!=null||j!=null)if(N){let xe=te==null?-1/0:L(ae[te],P,I,
0),Le=j==null?1/0:L(ae[j],P,I,0),et=Y-xe,me=Le-Y;et<=me?et<=D&&(C=te):me<=D&&(C=j)}else C=j==null?te:te==null?j:x-te<=j-
x?te:j}else N&&Ge(Y-L(ae[x],P,I,0))>D&&(C=null);return C}}let ei=s=>{F.event=s};F.idxs=pe,F._lock=!1;let ut=F.points;ut.
show=ne(ut.show),ut.size=ne(ut.size),ut.stroke=ne(ut.stroke),ut.width=ne(ut.width),ut.fill=ne(ut.fill);let an=i.focus=Ve(
{},e.focus||{alpha:.3},F.focus),Ai=an.prox>=0,$i=Ai&&ut.one,Nt=[],Di=[],Li=[];function Ks(s,u){let f=ut.show(i,u);if(f instanceof
HTMLElement)return Ct(f,Jm),Ct(f,s.class),gn(f,-10,-10,Z,R),S.insertBefore(f,Nt[u]),f}function Gs(s,u){if(r==1||u>0){let f=r==
1&&k[s.scale].time,p=s.value;s.value=f?Pc(p)?Oc(ie,Rc(p,H)):p||oe:p||fg,s.label=s.label||(f?ig:ng)}if($i||u>0){s.width=s.
width==null?1:s.width,s.paths=s.paths||Tg||hh,s.fillTo=ne(s.fillTo||gg),s.pxAlign=+se(s.pxAlign,E),s.pxRound=Uc(s.pxAlign),
s.stroke=ne(s.stroke||null),s.fill=ne(s.fill||null),s._stroke=s._fill=s._paths=s._focus=null;let f=dg(vt(1,s.width),1),p=s.
points=Ve({},{size:f,width:vt(1,f*.2),stroke:s.stroke,space:f*2,paths:Eg,_stroke:null,_fill:null},s.points);p.show=ne(p.
show),p.filter=ne(p.filter),p.fill=ne(p.fill),p.stroke=ne(p.stroke),p.paths=ne(p.paths),p.pxAlign=s.pxAlign}if(qe){let f=Gr(
s,u);Ae.splice(u,0,f[0]),ln.splice(u,0,f[1]),ee.values.push(null)}if(ct){pe.splice(u,0,null);let f=null;$i?u==0&&(f=Ks(s,
u)):u>0&&(f=Ks(s,u)),Nt.splice(u,0,f),Di.splice(u,0,0),Li.splice(u,0,0)}Xe("addSeries",u)}function ed(s,u){u=u??y.length,
s=r==1?Cs(s,u,Fc,Wc):Cs(s,u,{},qc),y.splice(u,0,s),Gs(y[u],u)}i.addSeries=ed;function td(s){if(y.splice(s,1),qe){ee.values.
splice(s,1),ln.splice(s,1);let u=Ae.splice(s,1)[0];Mi(null,u.firstChild),u.remove()}ct&&(pe.splice(s,1),Nt.splice(s,1)[0].
remove(),Di.splice(s,1),Li.splice(s,1)),Xe("delSeries",s)}i.delSeries=td;let ti=[!1,!1,!1,!1];function nd(s,u){if(s._show=
s.show,s.show){let f=s.side%2,p=k[s.scale];p==null&&(s.scale=f?y[1].scale:O,p=k[s.scale]);let g=p.time;s.size=ne(s.size),
s.space=ne(s.space),s.rotate=ne(s.rotate),Kn(s.incrs)&&s.incrs.forEach(x=>{!Gn.has(x)&&Gn.set(x,of(x))}),s.incrs=ne(s.incrs||
(p.distr==2?Ih:g?A==1?zh:qh:wi)),s.splits=ne(s.splits||(g&&p.distr==1?_t:p.distr==3?Ss:p.distr==4?lg:og)),s.stroke=ne(s.
stroke),s.grid.stroke=ne(s.grid.stroke),s.ticks.stroke=ne(s.ticks.stroke),s.border.stroke=ne(s.border.stroke);let b=s.values;
s.values=Kn(b)&&!Kn(b[0])?ne(b):g?Kn(b)?Nc(ie,Lc(b,H)):Pc(b)?Uh(ie,b):b||Te:b||rg,s.filter=ne(s.filter||(p.distr>=3&&p.log==
10?ug:p.distr==3&&p.log==2?cg:nf)),s.font=Yc(s.font),s.labelFont=Yc(s.labelFont),s._size=s.size(i,null,u,0),s._space=s._rotate=
s._incrs=s._found=s._splits=s._values=null,s._size>0&&(ti[u]=!0,s._el=qt(Km,w))}}function dr(s,u,f,p){let[g,b,x,T]=f,C=u%
2,D=0;return C==0&&(T||b)&&(D=u==0&&!g||u==2&&!x?Ke(Ic.size/3):0),C==1&&(g||x)&&(D=u==1&&!b||u==3&&!T?Ke(Hc.size/2):0),D}
let Ys=i.padding=(e.padding||[dr,dr,dr,dr]).map(s=>ne(se(s,dr))),Ln=i._padding=Ys.map((s,u)=>s(i,u,ti,0)),nt,Ye=null,Qe=null,
Jr=r==1?y[0].idxs:null,jt=null,pr=!1;function Qs(s,u){if(t=s??[],i.data=i._data=t,r==2){nt=0;for(let f=1;f<y.length;f++)
nt+=t[f][0].length}else{t.length==0&&(i.data=i._data=t=[[]]),jt=t[0],nt=jt.length;let f=t;if(B==2){f=t.slice();let p=f[0]=
Array(nt);for(let g=0;g<nt;g++)p[g]=g}i._data=t=f}if(Ri(!0),Xe("setData"),B==2&&(Pi=!0),u!==!1){let f=P;f.auto(i,pr)?al():
Rn(O,f.min,f.max),Xn=Xn||F.left>=0,Lt=!0,Oi()}}i.setData=Qs;function al(){pr=!0;let s,u;r==1&&(nt>0?(Ye=Jr[0]=0,Qe=Jr[1]=
nt-1,s=t[0][Ye],u=t[0][Qe],B==2?(s=Ye,u=Qe):s==u&&(B==3?[s,u]=Zo(s,s,P.log,!1):B==4?[s,u]=Ds(s,s,P.log,!1):P.time?u=s+Ke(
86400/A):[s,u]=Yo(s,u,Ls,!0))):(Ye=Jr[0]=s=null,Qe=Jr[1]=u=null)),Rn(O,s,u)}let Zr,Ni,ul,cl,fl,dl,pl,ml,hl,wt;function Js(s,u,f,p,g,b){
s??=dc,f??=Rs,p??="butt",g??=dc,b??="round",s!=Zr&&(v.strokeStyle=Zr=s),g!=Ni&&(v.fillStyle=Ni=g),u!=ul&&(v.lineWidth=ul=
u),b!=fl&&(v.lineJoin=fl=b),p!=dl&&(v.lineCap=dl=p),f!=cl&&v.setLineDash(cl=f)}function Zs(s,u,f,p){u!=Ni&&(v.fillStyle=
Ni=u),s!=pl&&(v.font=pl=s),f!=ml&&(v.textAlign=ml=f),p!=hl&&(v.textBaseline=hl=p)}function gl(s,u,f,p,g=0){if(p.length>0&&
s.auto(i,pr)&&(u==null||u.min==null)){let b=se(Ye,0),x=se(Qe,p.length-1),T=f.min==null?uh(p,b,x,g,s.distr==3):[f.min,f.max];
s.min=on(s.min,f.min=T[0]),s.max=vt(s.max,f.max=T[1])}}let Xs={min:null,max:null};function id(){for(let p in k){let g=k[p];
V[p]==null&&(g.min==null||V[O]!=null&&g.auto(i,pr))&&(V[p]=Xs)}for(let p in k){let g=k[p];V[p]==null&&g.from!=null&&V[g.
from]!=null&&(V[p]=Xs)}V[O]!=null&&Ri(!0);let s={};for(let p in V){let g=V[p];if(g!=null){let b=s[p]=or(k[p],_h);if(g.min!=
null)Ve(b,g);else if(p!=O||r==2)if(nt==0&&b.from==null){let x=b.range(i,null,null,p);b.min=x[0],b.max=x[1]}else b.min=ge,
b.max=-ge}}if(nt>0){y.forEach((p,g)=>{if(r==1){let b=p.scale,x=V[b];if(x==null)return;let T=s[b];if(g==0){let C=T.range(
i,T.min,T.max,b);T.min=C[0],T.max=C[1],Ye=rn(T.min,t[0]),Qe=rn(T.max,t[0]),Qe-Ye>1&&(t[0][Ye]<T.min&&Ye++,t[0][Qe]>T.max&&
Qe--),p.min=jt[Ye],p.max=jt[Qe]}else p.show&&p.auto&&gl(T,x,p,t[g],p.sorted);p.idxs[0]=Ye,p.idxs[1]=Qe}else if(g>0&&p.show&&
p.auto){let[b,x]=p.facets,T=b.scale,C=x.scale,[D,N]=t[g],I=s[T],Y=s[C];I!=null&&gl(I,V[T],b,D,b.sorted),Y!=null&&gl(Y,V[C],
x,N,x.sorted),p.min=x.min,p.max=x.max}});for(let p in s){let g=s[p],b=V[p];if(g.from==null&&(b==null||b.min==null)){let x=g.
range(i,g.min==ge?null:g.min,g.max==-ge?null:g.max,p);g.min=x[0],g.max=x[1]}}}for(let p in s){let g=s[p];if(g.from!=null){
let b=s[g.from];if(b.min==null)g.min=g.max=null;else{let x=g.range(i,b.min,b.max,p);g.min=x[0],g.max=x[1]}}}let u={},f=!1;
for(let p in s){let g=s[p],b=k[p];if(b.min!=g.min||b.max!=g.max){b.min=g.min,b.max=g.max;let x=b.distr;b._min=x==3?An(b.
min):x==4?hs(b.min,b.asinh):x==100?b.fwd(b.min):b.min,b._max=x==3?An(b.max):x==4?hs(b.max,b.asinh):x==100?b.fwd(b.max):b.
max,u[p]=f=!0}}if(f){y.forEach((p,g)=>{r==2?g>0&&u.y&&(p._paths=null):u[p.scale]&&(p._paths=null)});for(let p in u)Pi=!0,
Xe("setScale",p);ct&&F.left>=0&&(Xn=Lt=!0)}for(let p in V)V[p]=null}function rd(s){let u=ks(Ye-1,0,nt-1),f=ks(Qe+1,0,nt-
1);for(;s[u]==null&&u>0;)u--;for(;s[f]==null&&f<nt-1;)f++;return[u,f]}function od(){if(nt>0){let s=y.some(u=>u._focus)&&
wt!=an.alpha;s&&(v.globalAlpha=wt=an.alpha),y.forEach((u,f)=>{if(f>0&&u.show&&(ea(f,!1),ea(f,!0),u._paths==null)){let p=wt;
wt!=u.alpha&&(v.globalAlpha=wt=u.alpha);let g=r==2?[0,t[f][0].length-1]:rd(t[f]);u._paths=u.paths(i,f,g[0],g[1]),wt!=p&&
(v.globalAlpha=wt=p)}}),y.forEach((u,f)=>{if(f>0&&u.show){let p=wt;wt!=u.alpha&&(v.globalAlpha=wt=u.alpha),u._paths!=null&&
ta(f,!1);{let g=u._paths!=null?u._paths.gaps:null,b=u.points.show(i,f,Ye,Qe,g),x=u.points.filter(i,f,b,g);(b||x)&&(u.points.
_paths=u.points.paths(i,f,Ye,Qe,x),ta(f,!0))}wt!=p&&(v.globalAlpha=wt=p),Xe("drawSeries",f)}}),s&&(v.globalAlpha=wt=1)}}
function ea(s,u){let f=u?y[s].points:y[s];f._stroke=f.stroke(i,s),f._fill=f.fill(i,s)}function ta(s,u){let f=u?y[s].points:
y[s],{stroke:p,fill:g,clip:b,flags:x,_stroke:T=f._stroke,_fill:C=f._fill,_width:D=f.width}=f._paths;D=ve(D*ue,3);let N=null,
I=D%2/2;u&&C==null&&(C=D>0?"#fff":T);let Y=f.pxAlign==1&&I>0;if(Y&&v.translate(I,I),!u){let ae=St-D/2,le=Dt-D/2,te=bt+D,
j=Ut+D;N=new Path2D,N.rect(ae,le,te,j)}u?vl(T,D,f.dash,f.cap,C,p,g,x,b):ld(s,T,D,f.dash,f.cap,C,p,g,x,N,b),Y&&v.translate(
-I,-I)}function ld(s,u,f,p,g,b,x,T,C,D,N){let I=!1;C!=0&&Q.forEach((Y,ae)=>{if(Y.series[0]==s){let le=y[Y.series[1]],te=t[Y.
series[1]],j=(le._paths||jr).band;Kn(j)&&(j=Y.dir==1?j[0]:j[1]);let z,xe=null;le.show&&j&&fh(te,Ye,Qe)?(xe=Y.fill(i,ae)||
b,z=le._paths.clip):j=null,vl(u,f,p,g,xe,x,T,C,D,N,z,j),I=!0}}),I||vl(u,f,p,g,b,x,T,C,D,N)}let na=lr|Es;function vl(s,u,f,p,g,b,x,T,C,D,N,I){
Js(s,u,f,p,g),(C||D||I)&&(v.save(),C&&v.clip(C),D&&v.clip(D)),I?(T&na)==na?(v.clip(I),N&&v.clip(N),eo(g,x),Xr(s,b,u)):T&
Es?(eo(g,x),v.clip(I),Xr(s,b,u)):T&lr&&(v.save(),v.clip(I),N&&v.clip(N),eo(g,x),v.restore(),Xr(s,b,u)):(eo(g,x),Xr(s,b,u)),
(C||D||I)&&v.restore()}function Xr(s,u,f){f>0&&(u instanceof Map?u.forEach((p,g)=>{v.strokeStyle=Zr=g,v.stroke(p)}):u!=null&&
s&&v.stroke(u))}function eo(s,u){u instanceof Map?u.forEach((f,p)=>{v.fillStyle=Ni=p,v.fill(f)}):u!=null&&s&&v.fill(u)}function sd(s,u,f,p){
let g=$[s],b;if(p<=0)b=[0,0];else{let x=g._space=g.space(i,s,u,f,p),T=g._incrs=g.incrs(i,s,u,f,p,x);b=Dg(u,f,T,p,x)}return g.
_found=b}function _l(s,u,f,p,g,b,x,T,C,D){let N=x%2/2;E==1&&v.translate(N,N),Js(T,x,C,D,T),v.beginPath();let I,Y,ae,le,te=g+
(p==0||p==3?-b:b);f==0?(Y=g,le=te):(I=g,ae=te);for(let j=0;j<s.length;j++)u[j]!=null&&(f==0?I=ae=s[j]:Y=le=s[j],v.moveTo(
I,Y),v.lineTo(ae,le));v.stroke(),E==1&&v.translate(-N,-N)}function ad(s){let u=!0;return $.forEach((f,p)=>{if(!f.show)return;
let g=k[f.scale];if(g.min==null){f._show&&(u=!1,f._show=!1,Ri(!1));return}else f._show||(u=!1,f._show=!0,Ri(!1));let b=f.
side,x=b%2,{min:T,max:C}=g,[D,N]=sd(p,T,C,x==0?Z:R);if(N==0)return;let I=g.distr==2,Y=f._splits=f.splits(i,p,T,C,D,N,I),
ae=g.distr==2?Y.map(z=>jt[z]):Y,le=g.distr==2?jt[Y[1]]-jt[Y[0]]:D,te=f._values=f.values(i,f.filter(i,ae,p,N,le),p,N,le);
f._rotate=b==2?f.rotate(i,te,p,N):0;let j=f._size;f._size=Wt(f.size(i,te,p,s)),j!=null&&f._size!=j&&(u=!1)}),u}function ud(s){
let u=!0;return Ys.forEach((f,p)=>{let g=f(i,p,ti,s);g!=Ln[p]&&(u=!1),Ln[p]=g}),u}function cd(){for(let s=0;s<$.length;s++){
let u=$[s];if(!u.show||!u._show)continue;let f=u.side,p=f%2,g,b,x=u.stroke(i,s),T=f==0||f==3?-1:1,[C,D]=u._found;if(u.label!=
null){let pt=u.labelGap*T,Mt=Ke((u._lpos+pt)*ue);Zs(u.labelFont[0],x,"center",f==2?"top":fc),v.save(),p==1?(g=b=0,v.translate(
Mt,Ke(Dt+Ut/2)),v.rotate((f==3?-Ko:Ko)/2)):(g=Ke(St+bt/2),b=Mt);let ri=ef(u.label)?u.label(i,s,C,D):u.label;v.fillText(ri,
g,b),v.restore()}if(D==0)continue;let N=k[u.scale],I=p==0?bt:Ut,Y=p==0?St:Dt,ae=u._splits,le=N.distr==2?ae.map(pt=>jt[pt]):
ae,te=N.distr==2?jt[ae[1]]-jt[ae[0]]:C,j=u.ticks,z=u.border,xe=j.show?j.size:0,Le=Ke(xe*ue),et=Ke((u.alignTo==2?u._size-
xe-u.gap:u.gap)*ue),me=u._rotate*-Ko/180,Ne=M(u._pos*ue),Tt=(Le+et)*T,dt=Ne+Tt;b=p==0?dt:0,g=p==1?dt:0;let Rt=u.font[0],
Kt=u.align==1?er:u.align==2?ds:me>0?er:me<0?ds:p==0?"center":f==3?ds:er,fn=me||p==1?"middle":f==2?"top":fc;Zs(Rt,x,Kt,fn);
let Et=u.font[1]*u.lineGap,Ot=ae.map(pt=>M(c(pt,N,I,Y))),Gt=u._values;for(let pt=0;pt<Gt.length;pt++){let Mt=Gt[pt];if(Mt!=
null){p==0?g=Ot[pt]:b=Ot[pt],Mt=""+Mt;let ri=Mt.indexOf(`
`)==-1?[Mt]:Mt.split(/\n/gm);for(let mt=0;mt<ri.length;mt++){let ya=ri[mt];me?(v.save(),v.translate(g,b+mt*Et),v.rotate(
me),v.fillText(ya,0,0),v.restore()):v.fillText(ya,g,b+mt*Et)}}}j.show&&_l(Ot,j.filter(i,le,s,D,te),p,f,Ne,Le,ve(j.width*
ue,3),j.stroke(i,s),j.dash,j.cap);let dn=u.grid;dn.show&&_l(Ot,dn.filter(i,le,s,D,te),p,p==0?2:1,p==0?Dt:St,p==0?Ut:bt,ve(
dn.width*ue,3),dn.stroke(i,s),dn.dash,dn.cap),z.show&&_l([Ne],[1],p==0?1:0,p==0?1:2,p==1?Dt:St,p==1?Ut:bt,ve(z.width*ue,
3),z.stroke(i,s),z.dash,z.cap)}Xe("drawAxes")}function Ri(s){y.forEach((u,f)=>{f>0&&(u._paths=null,s&&(r==1?(u.min=null,
u.max=null):u.facets.forEach(p=>{p.min=null,p.max=null})))})}let to=!1,bl=!1,mr=[];function fd(){bl=!1;for(let s=0;s<mr.
length;s++)Xe(...mr[s]);mr.length=0}function Oi(){to||(Th(ia),to=!0)}function dd(s,u=!1){to=!0,bl=u,s(i),ia(),u&&mr.length>
0&&queueMicrotask(fd)}i.batch=dd;function ia(){if(ll&&(id(),ll=!1),Pi&&(Qf(),Pi=!1),Yr){if(Se(_,er,_e),Se(_,"top",We),Se(
_,qr,Z),Se(_,Wr,R),Se(S,er,_e),Se(S,"top",We),Se(S,qr,Z),Se(S,Wr,R),Se(w,qr,_n),Se(w,Wr,Qn),h.width=Ke(_n*ue),h.height=Ke(
Qn*ue),$.forEach(({_el:s,_show:u,_size:f,_pos:p,side:g})=>{if(s!=null)if(u){let b=g===3||g===0?f:0,x=g%2==1;Se(s,x?"left":
"top",p-b),Se(s,x?"width":"height",f),Se(s,x?"top":"left",x?We:_e),Se(s,x?"height":"width",x?R:Z),ys(s,yi)}else Ct(s,yi)}),
Zr=Ni=ul=fl=dl=pl=ml=hl=cl=null,wt=1,vr(!0),_e!=Ci||We!=Jn||Z!=sn||R!=Zn){Ri(!1);let s=Z/sn,u=R/Zn;if(ct&&!Xn&&F.left>=0){
F.left*=s,F.top*=u,Ii&&gn(Ii,Ke(F.left),0,Z,R),Fi&&gn(Fi,0,Ke(F.top),Z,R);for(let f=0;f<Nt.length;f++){let p=Nt[f];p!=null&&
(Di[f]*=s,Li[f]*=u,gn(p,Wt(Di[f]),Wt(Li[f]),Z,R))}}if(ye.show&&!Qr&&ye.left>=0&&ye.width>0){ye.left*=s,ye.width*=s,ye.top*=
u,ye.height*=u;for(let f in Tl)Se(Vi,f,ye[f])}Ci=_e,Jn=We,sn=Z,Zn=R}Xe("setSize"),Yr=!1}_n>0&&Qn>0&&(v.clearRect(0,0,h.width,
h.height),Xe("drawClear"),W.forEach(s=>s()),Xe("draw")),ye.show&&Qr&&(no(ye),Qr=!1),ct&&Xn&&(ii(null,!0,!1),Xn=!1),ee.show&&
ee.live&&Lt&&(kl(),Lt=!1),d||(d=!0,i.status=1,Xe("ready")),pr=!1,to=!1}i.redraw=(s,u)=>{Pi=u||!1,s!==!1?Rn(O,P.min,P.max):
Oi()};function wl(s,u){let f=k[s];if(f.from==null){if(nt==0){let p=f.range(i,u.min,u.max,s);u.min=p[0],u.max=p[1]}if(u.min>
u.max){let p=u.min;u.min=u.max,u.max=p}if(nt>1&&u.min!=null&&u.max!=null&&u.max-u.min<1e-16)return;s==O&&f.distr==2&&nt>
0&&(u.min=rn(u.min,t[0]),u.max=rn(u.max,t[0]),u.min==u.max&&u.max++),V[s]=u,ll=!0,Oi()}}i.setScale=wl;let yl,xl,Ii,Fi,ra,
oa,zi,Hi,la,sa,we,Me,Nn=!1,it=F.drag,Je=it.x,Ze=it.y;ct&&(F.x&&(yl=qt(Ym,S)),F.y&&(xl=qt(Qm,S)),P.ori==0?(Ii=yl,Fi=xl):(Ii=
xl,Fi=yl),we=F.left,Me=F.top);let ye=i.select=Ve({show:!0,over:!0,left:0,width:0,top:0,height:0},e.select),Vi=ye.show?qt(
Gm,ye.over?S:_):null;function no(s,u){if(ye.show){for(let f in s)ye[f]=s[f],f in Tl&&Se(Vi,f,s[f]);u!==!1&&Xe("setSelect")}}
i.setSelect=no;function pd(s){if(y[s].show)qe&&ys(Ae[s],yi);else if(qe&&Ct(Ae[s],yi),ct){let f=$i?Nt[0]:Nt[s];f!=null&&gn(
f,-10,-10,Z,R)}}function Rn(s,u,f){wl(s,{min:u,max:f})}function un(s,u,f,p){u.focus!=null&&_d(s),u.show!=null&&y.forEach(
(g,b)=>{b>0&&(s==b||s==null)&&(g.show=u.show,pd(b),r==2?(Rn(g.facets[0].scale,null,null),Rn(g.facets[1].scale,null,null)):
Rn(g.scale,null,null),Oi())}),f!==!1&&Xe("setSeries",s,u),p&&_r("setSeries",i,s,u)}i.setSeries=un;function md(s,u){Ve(Q[s],
u)}function hd(s,u){s.fill=ne(s.fill||null),s.dir=se(s.dir,-1),u=u??Q.length,Q.splice(u,0,s)}function gd(s){s==null?Q.length=
0:Q.splice(s,1)}i.addBand=hd,i.setBand=md,i.delBand=gd;function vd(s,u){y[s].alpha=u,ct&&Nt[s]!=null&&(Nt[s].style.opacity=
u),qe&&Ae[s]&&(Ae[s].style.opacity=u)}let bn,On,ni,qi={focus:!0};function _d(s){if(s!=ni){let u=s==null,f=an.alpha!=1;y.
forEach((p,g)=>{if(r==1||g>0){let b=u||g==0||g==s;p._focus=u?null:b,f&&vd(g,b?1:an.alpha)}}),ni=s,f&&Oi()}}qe&&Ai&&ft(hc,
ce,s=>{F._lock||(ei(s),ni!=null&&un(null,qi,!0,He.setSeries))});function cn(s,u,f){let p=k[u];f&&(s=s/ue-(p.ori==1?We:_e));
let g=Z;p.ori==1&&(g=R,s=g-s),p.dir==-1&&(s=g-s);let b=p._min,x=p._max,T=s/g,C=b+(x-b)*T,D=p.distr;return D==3?ir(10,C):
D==4?ph(C,p.asinh):D==100?p.bwd(C):C}function bd(s,u){let f=cn(s,O,u);return rn(f,t[0],Ye,Qe)}i.valToIdx=s=>rn(s,t[0]),i.
posToIdx=bd,i.posToVal=cn,i.valToPos=(s,u,f)=>k[u].ori==0?l(s,k[u],f?bt:Z,f?St:0):a(s,k[u],f?Ut:R,f?Dt:0),i.setCursor=(s,u,f)=>{
we=s.left,Me=s.top,ii(null,u,f)};function aa(s,u){Se(Vi,er,ye.left=s),Se(Vi,qr,ye.width=u)}function ua(s,u){Se(Vi,"top",
ye.top=s),Se(Vi,Wr,ye.height=u)}let hr=P.ori==0?aa:ua,gr=P.ori==1?aa:ua;function wd(){if(qe&&ee.live)for(let s=r==2?1:0;s<
y.length;s++){if(s==0&&$t)continue;let u=ee.values[s],f=0;for(let p in u)ln[s][f++].firstChild.nodeValue=u[p]}}function kl(s,u){
if(s!=null&&(s.idxs?s.idxs.forEach((f,p)=>{pe[p]=f}):vh(s.idx)||pe.fill(s.idx),ee.idx=pe[0]),qe&&ee.live){for(let f=0;f<
y.length;f++)(f>0||r==1&&!$t)&&yd(f,pe[f]);wd()}Lt=!1,u!==!1&&Xe("setLegend")}i.setLegend=kl;function yd(s,u){let f=y[s],
p=s==0&&B==2?jt:t[s],g;$t?g=f.values(i,s,u)??Dn:(g=f.value(i,u==null?null:p[u],s,u),g=g==null?Dn:{_:g}),ee.values[s]=g}function ii(s,u,f){
la=we,sa=Me,[we,Me]=F.move(i,we,Me),F.left=we,F.top=Me,ct&&(Ii&&gn(Ii,Ke(we),0,Z,R),Fi&&gn(Fi,0,Ke(Me),Z,R));let p,g=Ye>
Qe;bn=ge,On=null;let b=P.ori==0?Z:R,x=P.ori==1?Z:R;if(we<0||nt==0||g){p=F.idx=null;for(let T=0;T<y.length;T++){let C=Nt[T];
C!=null&&gn(C,-10,-10,Z,R)}Ai&&un(null,qi,!0,s==null&&He.setSeries),ee.live&&(pe.fill(p),Lt=!0)}else{let T,C,D;r==1&&(T=
P.ori==0?we:Me,C=cn(T,O),p=F.idx=rn(C,t[0],Ye,Qe),D=L(t[0][p],P,b,0));let N=-10,I=-10,Y=0,ae=0,le=!0,te="",j="";for(let z=r==
2?1:0;z<y.length;z++){let xe=y[z],Le=pe[z],et=Le==null?null:r==1?t[z][Le]:t[z][1][Le],me=F.dataIdx(i,z,p,C),Ne=me==null?
null:r==1?t[z][me]:t[z][1][me];if(Lt=Lt||Ne!=et||me!=Le,pe[z]=me,z>0&&xe.show){let Tt=me==null?-10:me==p?D:L(r==1?t[0][me]:
t[z][0][me],P,b,0),dt=Ne==null?-10:G(Ne,r==1?k[xe.scale]:k[xe.facets[1].scale],x,0);if(Ai&&Ne!=null){let Rt=P.ori==1?we:
Me,Kt=Ge(an.dist(i,z,me,dt,Rt));if(Kt<bn){let fn=an.bias;if(fn!=0){let Et=cn(Rt,xe.scale),Ot=Ne>=0?1:-1,Gt=Et>=0?1:-1;Gt==
Ot&&(Gt==1?fn==1?Ne>=Et:Ne<=Et:fn==1?Ne<=Et:Ne>=Et)&&(bn=Kt,On=z)}else bn=Kt,On=z}}if(Lt||$i){let Rt,Kt;P.ori==0?(Rt=Tt,
Kt=dt):(Rt=dt,Kt=Tt);let fn,Et,Ot,Gt,dn,pt,Mt=!0,ri=ut.bbox;if(ri!=null){Mt=!1;let mt=ri(i,z);Ot=mt.left,Gt=mt.top,fn=mt.
width,Et=mt.height}else Ot=Rt,Gt=Kt,fn=Et=ut.size(i,z);if(pt=ut.fill(i,z),dn=ut.stroke(i,z),$i)z==On&&bn<=an.prox&&(N=Ot,
I=Gt,Y=fn,ae=Et,le=Mt,te=pt,j=dn);else{let mt=Nt[z];mt!=null&&(Di[z]=Ot,Li[z]=Gt,xc(mt,fn,Et,Mt),wc(mt,pt,dn),gn(mt,Wt(Ot),
Wt(Gt),Z,R))}}}}if($i){let z=an.prox,xe=ni==null?bn<=z:bn>z||On!=ni;if(Lt||xe){let Le=Nt[0];Le!=null&&(Di[0]=N,Li[0]=I,xc(
Le,Y,ae,le),wc(Le,te,j),gn(Le,Wt(N),Wt(I),Z,R))}}}if(ye.show&&Nn)if(s!=null){let[T,C]=He.scales,[D,N]=He.match,[I,Y]=s.cursor.
sync.scales,ae=s.cursor.drag;if(Je=ae._x,Ze=ae._y,Je||Ze){let{left:le,top:te,width:j,height:z}=s.select,xe=s.scales[I].ori,
Le=s.posToVal,et,me,Ne,Tt,dt,Rt=T!=null&&D(T,I),Kt=C!=null&&N(C,Y);Rt&&Je?(xe==0?(et=le,me=j):(et=te,me=z),Ne=k[T],Tt=L(
Le(et,I),Ne,b,0),dt=L(Le(et+me,I),Ne,b,0),hr(on(Tt,dt),Ge(dt-Tt))):hr(0,b),Kt&&Ze?(xe==1?(et=le,me=j):(et=te,me=z),Ne=k[C],
Tt=G(Le(et,Y),Ne,x,0),dt=G(Le(et+me,Y),Ne,x,0),gr(on(Tt,dt),Ge(dt-Tt))):gr(0,x)}else El()}else{let T=Ge(la-ra),C=Ge(sa-oa);
if(P.ori==1){let Y=T;T=C,C=Y}Je=it.x&&T>=it.dist,Ze=it.y&&C>=it.dist;let D=it.uni;D!=null?Je&&Ze&&(Je=T>=D,Ze=C>=D,!Je&&
!Ze&&(C>T?Ze=!0:Je=!0)):it.x&&it.y&&(Je||Ze)&&(Je=Ze=!0);let N,I;Je&&(P.ori==0?(N=zi,I=we):(N=Hi,I=Me),hr(on(N,I),Ge(I-N)),
Ze||gr(0,x)),Ze&&(P.ori==1?(N=zi,I=we):(N=Hi,I=Me),gr(on(N,I),Ge(I-N)),Je||hr(0,b)),!Je&&!Ze&&(hr(0,0),gr(0,0))}if(it._x=
Je,it._y=Ze,s==null){if(f){if(wa!=null){let[T,C]=He.scales;He.values[0]=T!=null?cn(P.ori==0?we:Me,T):null,He.values[1]=C!=
null?cn(P.ori==1?we:Me,C):null}_r(ps,i,we,Me,Z,R,p)}if(Ai){let T=f&&He.setSeries,C=an.prox;ni==null?bn<=C&&un(On,qi,!0,T):
bn>C?un(null,qi,!0,T):On!=ni&&un(On,qi,!0,T)}}Lt&&(ee.idx=p,kl()),u!==!1&&Xe("setCursor")}let In=null;Object.defineProperty(
i,"rect",{get(){return In==null&&vr(!1),In}});function vr(s=!1){s?In=null:(In=S.getBoundingClientRect(),Xe("syncRect",In))}
function ca(s,u,f,p,g,b,x){F._lock||Nn&&s!=null&&s.movementX==0&&s.movementY==0||(Sl(s,u,f,p,g,b,x,!1,s!=null),s!=null?ii(
null,!0,!0):ii(u,!0,!1))}function Sl(s,u,f,p,g,b,x,T,C){if(In==null&&vr(!1),ei(s),s!=null)f=s.clientX-In.left,p=s.clientY-
In.top;else{if(f<0||p<0){we=-10,Me=-10;return}let[D,N]=He.scales,I=u.cursor.sync,[Y,ae]=I.values,[le,te]=I.scales,[j,z]=He.
match,xe=u.axes[0].side%2==1,Le=P.ori==0?Z:R,et=P.ori==1?Z:R,me=xe?b:g,Ne=xe?g:b,Tt=xe?p:f,dt=xe?f:p;if(le!=null?f=j(D,le)?
c(Y,k[D],Le,0):-10:f=Le*(Tt/me),te!=null?p=z(N,te)?c(ae,k[N],et,0):-10:p=et*(dt/Ne),P.ori==1){let Rt=f;f=p,p=Rt}}C&&(u==
null||u.cursor.event.type==ps)&&((f<=1||f>=Z-1)&&(f=bi(f,Z)),(p<=1||p>=R-1)&&(p=bi(p,R))),T?(ra=f,oa=p,[zi,Hi]=F.move(i,
f,p)):(we=f,Me=p)}let Tl={width:0,height:0,left:0,top:0};function El(){no(Tl,!1)}let fa,da,pa,ma;function ha(s,u,f,p,g,b,x){
Nn=!0,Je=Ze=it._x=it._y=!1,Sl(s,u,f,p,g,b,x,!0,!1),s!=null&&(ft(ms,bs,ga,!1),_r(pc,i,zi,Hi,Z,R,null));let{left:T,top:C,width:D,
height:N}=ye;fa=T,da=C,pa=D,ma=N}function ga(s,u,f,p,g,b,x){Nn=it._x=it._y=!1,Sl(s,u,f,p,g,b,x,!1,!0);let{left:T,top:C,width:D,
height:N}=ye,I=D>0||N>0,Y=fa!=T||da!=C||pa!=D||ma!=N;if(I&&Y&&no(ye),it.setScale&&I&&Y){let ae=T,le=D,te=C,j=N;if(P.ori==
1&&(ae=C,le=N,te=T,j=D),Je&&Rn(O,cn(ae,O),cn(ae+le,O)),Ze)for(let z in k){let xe=k[z];z!=O&&xe.from==null&&xe.min!=ge&&Rn(
z,cn(te+j,z),cn(te,z))}El()}else F.lock&&(F._lock=!F._lock,ii(u,!0,s!=null));s!=null&&(Mi(ms,bs),_r(ms,i,we,Me,Z,R,null))}
function xd(s,u,f,p,g,b,x){if(F._lock)return;ei(s);let T=Nn;if(Nn){let C=!0,D=!0,N=10,I,Y;P.ori==0?(I=Je,Y=Ze):(I=Ze,Y=Je),
I&&Y&&(C=we<=N||we>=Z-N,D=Me<=N||Me>=R-N),I&&C&&(we=we<zi?0:Z),Y&&D&&(Me=Me<Hi?0:R),ii(null,!0,!0),Nn=!1}we=-10,Me=-10,pe.
fill(null),ii(null,!0,!0),T&&(Nn=T)}function va(s,u,f,p,g,b,x){F._lock||(ei(s),al(),El(),s!=null&&_r(gc,i,we,Me,Z,R,null))}
function _a(){$.forEach(Lg),sl(i.width,i.height,!0)}xi(Go,nr,_a);let Wi={};Wi.mousedown=ha,Wi.mousemove=ca,Wi.mouseup=ga,
Wi.dblclick=va,Wi.setSeries=(s,u,f,p)=>{let g=He.match[2];f=g(i,u,f),f!=-1&&un(f,p,!0,!1)},ct&&(ft(pc,S,ha),ft(ps,S,ca),
ft(mc,S,s=>{ei(s),vr(!1)}),ft(hc,S,xd),ft(gc,S,va),Ms.add(i),i.syncRect=vr);let io=i.hooks=e.hooks||{};function Xe(s,u,f){
bl?mr.push([s,u,f]):s in io&&io[s].forEach(p=>{p.call(null,i,u,f)})}(e.plugins||[]).forEach(s=>{for(let u in s.hooks)io[u]=
(io[u]||[]).concat(s.hooks[u])});let ba=(s,u,f)=>f,He=Ve({key:null,setSeries:!1,filters:{pub:Mc,sub:Mc},scales:[O,y[1]?y[1].
scale:null],match:[Cc,Cc,ba],values:[null,null]},F.sync);He.match.length==2&&He.match.push(ba),F.sync=He;let wa=He.key,Ml=Tf(
wa);function _r(s,u,f,p,g,b,x){He.filters.pub(s,u,f,p,g,b,x)&&Ml.pub(s,u,f,p,g,b,x)}Ml.sub(i);function kd(s,u,f,p,g,b,x){
He.filters.sub(s,u,f,p,g,b,x)&&Wi[s](null,u,f,p,g,b,x)}i.pub=kd;function Sd(){Ml.unsub(i),Ms.delete(i),Yn.clear(),xs(Go,
nr,_a),m.remove(),ce?.remove(),Xe("destroy")}i.destroy=Sd;function Cl(){Xe("init",e,t),Qs(t||e.data,!1),V[O]?wl(O,V[O]):
al(),Qr=ye.show&&(ye.width>0||ye.height>0),Xn=Lt=!0,sl(e.width,e.height)}return y.forEach(Gs),$.forEach(nd),n?n instanceof
HTMLElement?(n.appendChild(m),Cl()):n(i,Cl):Cl(),i}tt.assign=Ve;tt.fmtNum=Ns;tt.rangeNum=Yo;tt.rangeLog=Zo;tt.rangeAsinh=
Ds;tt.orient=Si;tt.pxRatio=ue;tt.join=Sh;tt.fmtDate=Os,tt.tzDate=Rh;tt.sync=Tf;{tt.addGap=vg,tt.clipGaps=tl;let e=tt.paths=
{points:$f};e.linear=Lf,e.stepped=wg,e.bars=yg,e.spline=kg}var If=150;function ol(e,t){e.style.color=t;let n=getComputedStyle(e).color;return e.style.color="",n}function Ng(e,t){if(e===
null||t===null)return[0,1];let n=Math.max((t-e)*.15,t*.05,1);return[Math.max(0,e-n),t+n]}function Rg({data:[e]}){let t=e.
at(-1)??Date.now()/1e3;return[Math.min(e[0]??t,t-60),t]}function Ws({data:e}){let t=e[1]??[];for(let n=t.length-1;n>=0;--n)
if(t[n]!=null)return n}var Og=e=>{let t=Ws(e);return t===void 0?null:[t]};function Ig(e,t){let n=ol(e,"var(--muted)"),i={
stroke:ol(e,"var(--line)"),width:1},r=ol(e,`var(${t.colour})`),l=ol(e,`color-mix(in srgb, var(${t.colour}) 14%, transpar\
ent)`),a="11px system-ui, sans-serif";return{width:Math.max(100,e.clientWidth),height:If,padding:[8,null,null,null],legend:{
show:!1},cursor:{y:!1,sync:{key:"history"},points:{size:6},drag:{x:!1,y:!1}},scales:{x:{range:Rg},y:{range:(c,d,m)=>Ng(d,
m)}},tzDate:c=>Pe.peek()==="utc"?tt.tzDate(new Date(c*1e3),"UTC"):new Date(c*1e3),axes:[{stroke:n,font:a,grid:i,ticks:{show:!1},
size:24,space:76,values:Fg},{stroke:n,font:a,grid:i,ticks:{show:!1},size:72,space:28,incrs:t.steps,values:(c,d)=>Ws(c)===
void 0?[]:d.map(t.format)}],series:[{},{stroke:r,width:1.6,fill:l,points:{show:!1,filter:Og,size:6,fill:r}}]}}var Fg=[[3600,
"{HH}:{mm}",null,null,null,null,null,null,1],[60,"{HH}:{mm}",null,null,null,null,null,null,1],[1,"{HH}:{mm}:{ss}",null,null,
null,null,null,null,1]];function zg(e,t,{format:n,empty:i}){if(!t)return;let r=Ws(e),l=e.cursor.idx??r,a=l===void 0?void 0:
e.data[1]?.[l],c=l===void 0?void 0:e.data[0][l];r===void 0?t.textContent=i:a==null||c===void 0?t.textContent="":l===r?t.
textContent=n(a):t.textContent=`${n(a)} at ${Io(c*1e3,Pe.peek())}`}function Bs(e){let t=Re(null),n=Re(null),i=Re(null),r=[
e.times,e.values],l=`${Sn.value} ${Pe.value} ${Ju.value}`;return ke(()=>{let a=t.current;if(!a)return;let c=Ig(a,e),d=v=>zg(
v,n.current,e);c.hooks={ready:[d],setCursor:[d],setData:[d]};let m=new tt(c,r,a);i.current=m;let h=new ResizeObserver(()=>{
a.clientWidth>0&&m.setSize({width:a.clientWidth,height:If})});return h.observe(a),()=>{h.disconnect(),m.destroy()}},[l]),
ke(()=>i.current?.setData(r)),o("figure",{class:"chart",children:[o("figcaption",{children:[e.title," ",o("span",{class:"\
readout",ref:n})]}),o("div",{ref:t,role:"img","aria-label":e.label})]})}var Hg=[["10 min",600],["1 h",3600],["all",Number.POSITIVE_INFINITY]],Vg=Array.from({length:12},(e,t)=>[1,2,5].map(n=>n*
10**t)).flat(),qg=86400,Wg=[1,2,5,10,30,60,120,300,600,1800,3600,7200,21600,43200].concat([1,2,5,10,20,50,100,200,500,1e3,
5e3,1e4].map(e=>e*qg));function Ff(e,t,n){return e.map(i=>{let r=i.queues.get(t);return r?n(r)??null:null})}function zf(e,t,n){
let i=t.filter(c=>c!==null),r=i.at(-1);if(r===void 0)return`${e}: nothing yet`;let l=n(Math.min(...i)),a=n(Math.max(...i));
return`${e}: now ${n(r)}, between ${l} and ${a}`}function Hf({range:e}){return o("fieldset",{class:"choices",children:[o(
"legend",{class:"unseen",children:"Time shown"}),Hg.map(([t,n])=>o("button",{type:"button","aria-pressed":e.value===n,onClick:()=>e.
value=n,children:t},t))]})}function Vf({queue:e,seconds:t}){let n=Date.now()/1e3,i=xn.value.filter(c=>n-c.time<=t),r=i.map(
c=>c.time),l=Ff(i,e,c=>c.count),a=Ff(i,e,c=>c.oldestAge);return o(de,{children:[o(Bs,{title:"Events",label:zf("Events in\
 the queue",l,K),colour:"--accent",times:r,values:l,format:K,steps:Vg,empty:"not seen yet"}),o(Bs,{title:"Age of the old\
est",label:zf("Age of the oldest event",a,Tn),colour:"--second",times:r,values:a,format:Uu,steps:Wg,empty:"nothing waits"})]})}function cr({name:e,children:t,note:n}){return o("div",{class:"card figure-card",children:[o("dt",{children:e}),o("dd",{
class:"figure",children:t}),o("dd",{class:"note",children:n})]})}function Bg(e){let t=e.flatMap(n=>n.oldest===void 0?[]:
[Number(n.oldest)]);return t.length>0?Math.min(...t):void 0}function Ug({now:e}){let t=Bg(e.queues),n=e.queues.reduce((c,d)=>c+
d.damaged,0),i=e.queues.length,r=e.rates?.written?.["1m"]??0,l=e.rates?.deleted?.["1m"]??0,a=us(r,l);return o("dl",{class:"\
figures",children:[o(cr,{name:"Events in the queues",note:n>0?`${K(n)} of them damaged`:`in ${i} queue${i===1?"":"s"}`,children:K(
e.count)}),o(cr,{name:"Age of the oldest",note:t===void 0?"nothing waits":`since ${at(t,Pe.value)}`,children:t===void 0?
"–":Ji(t)}),o(cr,{name:"Written",note:"mean of the last minute",children:a(r)}),o(cr,{name:"Deleted",note:"mean of the\
 last minute",children:a(l)}),o(cr,{name:"Waiting readers",note:`${K(e.connections)} connection${e.connections===1?"":"s"}`,
children:K(e.waiting)}),o(cr,{name:"Running for",note:`${e.version}, durability ${e.durability}`,children:Tn(Date.now()/
1e3-e.startTime)})]})}function jg({now:e}){let t=e.rates?.byType??{},n=Object.keys(t).filter(l=>!pn.some(a=>a===l)),i=Math.
max(...Object.values(t),Number.MIN_VALUE),r=us(i);return o("section",{class:"card","aria-labelledby":"rates-title",children:[
o("h2",{id:"rates-title",children:"Written by kind"}),o("table",{class:"rates",children:[o("thead",{class:"unseen",children:o(
"tr",{children:[o("th",{scope:"col",children:"Kind"}),o("th",{scope:"col",children:"Share"}),o("th",{scope:"col",children:"\
Rate"})]})}),o("tbody",{children:[...pn,...n].map(l=>o("tr",{children:[o("th",{scope:"row",children:o(Mn,{name:l})}),o("\
td",{class:"bar-cell","aria-hidden":"true",children:o("div",{class:"bar","data-kind":l,children:o("div",{style:{width:`${100*
(t[l]??0)/i}%`}})})}),o("td",{class:"figure",children:r(t[l]??0)})]},l))})]})]})}function Kg(e){let{main:t,details:n}=Ho(
e);return[t,...n.slice(0,1)].join(", ")}function Gg(){let e=st.value.slice(0,8);return ke(()=>{Qi.value=e}),o("section",
{class:"card","aria-labelledby":"newest-title",children:[o("h2",{id:"newest-title",children:["Newest events",Ue.value===
"0"?"":` of ${Ue.value}`]}),e.length===0?o("p",{class:"muted",children:"None have been seen yet."}):null,o("ul",{class:"\
newest",children:e.map(t=>o("li",{class:gt.value.has(String(t.id))?"gone":"",children:o("a",{href:`#/events/${t.dsid}/${t.
id}`,children:[o("span",{class:"when",children:ju(t.date,Pe.value)}),o(Mn,{name:t.kind}),o("span",{class:"what",children:[
gt.value.has(String(t.id))?o("span",{class:"badge",children:"deleted"}):null," ",he(Kg(t))]})]})},`${t.dsid}/${t.id}`))})]})}
function qf(){let e=Hn("all"),t=Hn(600),n=ze.value;return n?o("div",{class:"overview",children:[o("h2",{class:"unseen",children:"\
Overview"}),o(Ug,{now:n}),o("div",{class:"stack",children:[o("section",{class:"card charts","aria-labelledby":"charts-ti\
tle",children:[o("div",{class:"card-head",children:[o("h2",{id:"charts-title",children:"While this page is open"}),o(Hf,
{range:t}),o("label",{children:[o("span",{class:"unseen",children:"Queue of the charts"}),o("select",{value:e.value,onChange:i=>e.
value=i.currentTarget.value,children:[o("option",{value:"all",children:"all queues"}),n.queues.map(i=>o("option",{value:String(
i.dsid),children:Xi(i)},i.dsid))]})]})]}),o(Vf,{queue:e.value,seconds:t.value})]}),o(Gg,{})]}),o("div",{class:"stack",children:[
o("section",{class:"card","aria-labelledby":"near-title",children:[o("h2",{id:"near-title",children:"Near the limits"}),
o(Wo,{now:n})]}),o(jg,{now:n})]})]}):o("p",{class:"empty",children:"Waiting for the first figures …"})}function Yg(e){let t=n=>{let i=pn.indexOf(n);return i<0?pn.length:i};return Object.entries(e.types).sort(([n],[i])=>t(n)-
t(i))}function Qg({queue:e}){let t=Yg(e);if(e.count===0)return o("span",{class:"muted",children:"empty"});let n=t.map(([
i,r])=>`${i} ${K(r)}`).join(", ");return o("div",{class:"mixture",role:"img","aria-label":n,title:n,children:t.map(([i,r])=>o(
"div",{"data-kind":i,style:{flexGrow:r}},i))})}function Jg({queue:e}){return o("tr",{children:[o("th",{scope:"row",children:[
o("a",{href:`#/events/${e.dsid}`,children:Xi(e)}),e.known?null:o("span",{class:"badge warn",children:"not known"})]}),o(
"td",{class:"figure number",children:K(e.count)}),o("td",{class:"figure",children:e.oldest===void 0?"–":Ji(e.oldest)}),
o("td",{class:e.damaged>0?"figure number problem":"figure number",children:K(e.damaged)}),o("td",{class:"figure",children:e.
newest===void 0?"–":at(e.newest,Pe.value)}),o("td",{class:"figure number",children:K(e.highestId)}),o("td",{class:"fig\
ure number",children:e.type??"–"}),o("td",{class:"wide",children:o(Qg,{queue:e})})]})}function Wf(){let e=ze.value?.queues??
[];return o("section",{class:"card","aria-labelledby":"queues-title",children:[o("h2",{id:"queues-title",children:"Queue\
s"}),o("p",{class:"muted",children:"The global queue and the queues of the data selections."}),o(qo,{label:"Table of the\
 queues",children:o("table",{class:"data",children:[o("thead",{children:o("tr",{children:[o("th",{scope:"col",children:"\
queue"}),o("th",{scope:"col",class:"number",children:"events"}),o("th",{scope:"col",children:"oldest"}),o("th",{scope:"c\
ol",class:"number",children:"damaged"}),o("th",{scope:"col",children:"newest"}),o("th",{scope:"col",class:"number",children:"\
highest id"}),o("th",{scope:"col",class:"number",children:"type"}),o("th",{scope:"col",children:"kinds"})]})}),o("tbody",
{children:e.map(t=>o(Jg,{queue:t},t.dsid))})]})})]})}var Us=!1;$e(()=>{lt.value.is==="down"?Us=!0:lt.value.is==="up"&&Us&&(Us=!1,En("The server answers again."))});function Zg({
since:e}){let t=ze.value?" What you see below is what it said last.":"";return o("div",{class:"banner bad",role:"alert",
children:[o("p",{children:[o("strong",{children:"The server does not answer"})," since ",Io(e,Pe.value),". The page keep\
s trying.",t]}),o("button",{type:"button",onClick:fi,children:"Try now"})]})}function Bf({title:e,text:t}){return o("div",
{class:"banner warn",role:"alert",children:o("p",{children:[o("strong",{children:e})," ",t]})})}function Xg({at:e}){return o(
"div",{class:"banner",role:"status",children:[o("p",{children:["The server was started again at ",at(e,Pe.value),"."]}),
o("button",{type:"button",onClick:()=>kn.value=void 0,children:"Close"})]})}function Uf(){let e=lt.value;return e.is==="\
down"?o(Zg,{since:e.since}):De.value==="out"?null:o(de,{children:[e.is==="troubled"?o(Bf,{title:"The server has trouble.",
text:e.why}):null,Gi.value?o(Bf,{title:"The queue is not ready.",text:Gi.value}):null,kn.value===void 0?null:o(Xg,{at:kn.
value})]})}function ev(e){if(e==="queues"&&ze.value?.queues.some(n=>n.damaged>0))return"damaged events";let t=mn.value?.members??[];
if(e==="cluster"&&t.some(n=>!n.reachable))return"a member does not answer"}function tv({text:e}){return e?o("span",{class:"\
dot",role:"img","aria-label":e,title:e}):null}function nv(e){return e==="check"?Eo("admin"):e==="cluster"?mn.value!==void 0||
rt.value==="cluster":!0}function iv(){let e=Re(null);return ke(()=>{e.current?.querySelector("[aria-current]")?.scrollIntoView(
{block:"nearest",inline:"nearest"})},[rt.value,De.value]),e}function rv(){let e=iv();return De.value!=="in"?null:o("nav",
{ref:e,"aria-label":"Views",children:Mr.filter(nv).map(t=>o("a",{href:ou(t),"aria-current":rt.value===t?"page":void 0,onClick:n=>{
n.preventDefault(),Pr(t)},children:[wo[t],o(tv,{text:ev(t)})]},t))})}var ov={unknown:["connecting",""],up:["connected","\
ok"],down:["no answer","bad"],troubled:["in trouble","warn"]};function lv(){let[e,t]=ov[lt.value.is];return o("span",{class:`\
state ${t}`,"data-testid":"state",children:e})}function sv(){if(!yn.value)return null;let{name:e,role:t,via:n}=yn.value;
return o("div",{class:"identity",children:[o("span",{title:`known by ${n}`,children:[e?o("span",{class:"name",children:e}):
null," ",o("span",{class:"role",children:t})]}),uu.value?o("button",{type:"button",class:"plain",onClick:fu,children:"Lo\
g out"}):null]})}function jf(){return o("header",{children:[o("div",{class:"title",children:[o(Pn,{name:"mark"}),o("h1",
{children:"eventd"}),o("span",{class:"host",children:location.host})]}),De.value==="out"?null:o(lv,{}),o(rv,{}),o("div",
{class:"tools",children:[o("button",{type:"button",class:"zone with-icon",onClick:Ro,"aria-label":`Times: ${jn(Pe.value)}`,
title:`Times are those of ${jn(Pe.value)} (u: local or UTC)`,children:[o(Pn,{name:"clock"})," ",Oo(Pe.value)]}),o("butto\
n",{type:"button",class:"icon",onClick:No,"aria-label":`Theme: ${Sn.value}`,title:`Theme: ${Sn.value}`,children:o(Pn,{name:Sn.
value})}),o("button",{type:"button",class:"icon","aria-label":"Help and shortcuts",title:"Help and shortcuts (?)",onClick:()=>Zi.
value=!0,children:o(Pn,{name:"help"})}),o(sv,{})]})]})}function av(){return document.querySelector("link[rel=license]")?.href}function Kf(){let e=()=>Zi.value=!1;return o(zo,{
open:Zi.value,title:"Help",onClose:e,children:[o("p",{children:"This page shows the event queues of this server as they \
are. It asks for the figures every two seconds; events arrive as they are stored."}),o("table",{class:"shortcuts",children:[
o("caption",{children:"Shortcuts"}),o("tbody",{children:nc.map(([t,n])=>o("tr",{children:[o("th",{scope:"row",children:o(
"kbd",{children:t})}),o("td",{children:n})]},t))})]}),o("label",{class:"choice",children:[o("input",{type:"checkbox",checked:Ir.
value==="on",onChange:t=>Ir.value=t.currentTarget.checked?"on":"off"}),"Shortcuts of single keys"]}),o("p",{class:"muted",
children:["Programs have the same from ",o("a",{href:"/openapi.json",children:"the server's API"}),". Parts of this page\
 are the work of others, under ",o("a",{href:av(),children:"their licences"}),"."]}),o("div",{class:"actions",children:o(
"button",{type:"button",onClick:e,children:"Close"})})]})}var uv={overview:qf,events:lc,queues:Wf,limits:ac,check:Gu,cluster:Yu};function cv(){if(De.value==="out")return o(uc,{});
if(De.value==="starting"||!yn.value)return o("p",{class:"empty",role:"status",children:lt.value.is==="unknown"?"Asking t\
he server …":"Waiting for the server …"});let e=uv[rt.value];return o(e,{})}function Gf(){return ke(ic,[]),o(de,{children:[
o("a",{class:"skip",href:"#main",onClick:fv,children:"Skip to the content"}),o(jf,{}),o(Uf,{}),o("main",{id:"main",tabIndex:-1,
children:o(cv,{})}),o(Kf,{}),o("div",{class:"unseen",role:"status","aria-live":"polite",children:Fo.value})]})}function fv(e){
e.preventDefault(),document.getElementById("main")?.focus()}function dv(){Vu(),Ql()||cu(),addEventListener("hashchange",()=>{Ql()&&Dr().catch(()=>{}).finally(fi)}),addEventListener(
"online",fi),document.addEventListener("visibilitychange",()=>{document.visibilityState==="visible"&&fi()}),$e(()=>{De.value===
"out"&&xu(),De.value==="in"&&fi()}),$e(()=>{let t=lt.value.is==="down"?"no answer – ":"",n=De.value==="in"?` – ${wo[rt.
value]}`:"";document.title=`${t}eventd ${location.host}${n}`}),Nu(),Hu(),Bu(),yu();let e=document.getElementById("page");
e&&Na(o(Gf,{}),e)}dv();
